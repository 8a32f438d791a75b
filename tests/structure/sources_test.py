"""Sources: each is listed in a CMake file, none uses a construct that we do without.

usage: sources_test.py ROOT
"""
import pathlib
import re
import sys
import unittest

FOLDERS = ("include", "src", "tests", "bench")
FORBIDDEN = {
    "a macro": re.compile(r"^\s*#\s*define\s+(?!BAILUXSKO_API\b)\w+", re.MULTILINE),
    "using namespace": re.compile(r"\busing\s+namespace\b"),
    "naked new": re.compile(r"(?<!operator )(?<!<)\bnew\b(?!\s*\()"),  # placement new has its parenthesis
    "naked delete": re.compile(r"(?<!operator )(?<!= )\bdelete\b"),
}
COMMENT_OR_TEXT = re.compile(
    r'R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|//[^\n]*|/\*.*?\*/', re.DOTALL)


def files(pattern):
    # tests/structure/installed is a project of its own
    return [path for folder in FOLDERS for path in sorted((ROOT / folder).rglob(pattern)) if "installed" not in path.parts]


def code(text):
    """The text without comments and literals; a digit separator is no literal."""
    return COMMENT_OR_TEXT.sub('""', re.sub(r"(?<=\d)'(?=\d)", "", text))


def offences(text):
    return [name for name, pattern in FORBIDDEN.items() if pattern.search(code(text))]


class Sources(unittest.TestCase):
    def test_each_is_listed(self):
        for source in files("*.cpp"):
            folder = source.parent
            while not (folder / "CMakeLists.txt").is_file():
                folder = folder.parent
            with self.subTest(source=str(source.relative_to(ROOT))):
                listed = re.split(r"[\s()]+", (folder / "CMakeLists.txt").read_text(encoding="utf-8"))
                name = source.relative_to(folder).as_posix()
                bench = f"benchmark({source.stem.removesuffix('_bench')}"
                self.assertTrue(name in listed or bench in (folder / "CMakeLists.txt").read_text(encoding="utf-8"),
                                f"not in {folder.relative_to(ROOT)}/CMakeLists.txt")

    def test_forbidden_constructs(self):
        for path in files("*.[ch]pp"):
            with self.subTest(file=str(path.relative_to(ROOT))):
                self.assertEqual(offences(path.read_text(encoding="utf-8")), [])

    def test_planted_constructs_are_caught(self):
        self.assertEqual(offences("#define TWO 2\n"), ["a macro"])
        self.assertEqual(offences("using namespace std;\n"), ["using namespace"])
        self.assertEqual(offences("int* p = new int;\n"), ["naked new"])
        self.assertEqual(offences("delete p;\n"), ["naked delete"])
        self.assertEqual(offences('auto t = "using namespace"; // a new one\n'), [])
        self.assertEqual(offences("#define BAILUXSKO_API\n#include <new>\nT(const T&) = delete;\nnew (slot) T();\n"), [])


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv.pop(1))
    unittest.main()
