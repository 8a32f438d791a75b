"""Malformed and absurd input ends in an error, never in a crash, a hang or all of the memory.

usage: malformed_test.py PROGRAM
"""
import os
import pathlib
import resource
import tempfile
import unittest

from program import results, run


LIMIT = 260_000_000  # bytes


class Malformed(unittest.TestCase):
    def error(self, *statements, status=1, **options):
        """The last result, which is an error; the program itself is well."""
        done = run("eval", "--json", *statements, **options)
        self.assertEqual(done.returncode, status, done.stderr[:500])
        last = results("eval", "--json", *statements, **options)[-1]
        self.assertEqual(last["kind"], "error", last)
        return last

    def test_unclosed(self):
        for statement in ["(", "[1, 2", '"text', "f(1, ", "[1; 2", "((((", "a[", "1 -> (m"]:
            with self.subTest(statement=statement):
                self.assertTrue(self.error(statement)["message"].startswith("syntax error"))

    def test_stray_bytes(self):
        for source in [b"1 + \x00 2\n", b"1 + \xff\xfe\n", b"\xc3\n", b"@\n", b"1 \x01\n", b"\xf0\x9f\n"]:
            with self.subTest(source=source):
                found = results("eval", "--json", stdin=source + b"2\n")
                self.assertTrue(found[0]["message"].startswith("syntax error"), found)
                self.assertEqual(found[1]["re"], 2.0)  # the next line is not lost

    def test_a_hundred_megabytes_of_brackets(self):
        for bracket in (b"[", b"(", b"]", b"-"):
            with self.subTest(bracket=bracket), tempfile.TemporaryDirectory() as folder:
                file = pathlib.Path(folder, "brackets.ws")
                file.write_bytes(bracket * 100_000_000)
                for json in ([], ["--json"]):
                    done = run("run", *json, str(file), timeout=300)
                    self.assertEqual(done.returncode, 1)
                    self.assertLess(len(done.stdout) + len(done.stderr), 2000)

    def test_deep_nesting(self):
        deep = 200_000
        for statement in ["(" * deep + "1" + ")" * deep, "[" * deep + "1" + "]" * deep, "-" * deep + "1",
                          "1^" * deep + "1", "abs_of(" * deep, "[1]" + "'" * deep, "[1]" + "[0]" * deep]:
            with self.subTest(statement=statement[:10]):
                self.assertIn(results("eval", "--json", stdin=statement)[0]["kind"], ("error", "matrix", "number"))
        self.assertEqual(self.error(stdin="(" * deep + "1" + ")" * deep)["message"], "nesting too deep")

    def test_nested_values(self):
        source = "n(k, x) := if(k == 0, x, n(k - 1, [x, x]))\n" + "a := [1]\n" + "a := [a, a]\n" * 5000 + "a\n1\n"
        self.assertEqual(run("eval", stdin=source).stdout.splitlines()[-1], "1")

    def test_runaway_recursion(self):
        self.assertEqual(self.error("f(n) := f(n + 1)", "f(0)")["message"], "nesting too deep")
        self.assertEqual(self.error("f(n) := g(n)", "g(n) := [f(n)]", "f(0)")["message"], "nesting too deep")
        self.assertEqual(self.error("f(i, j) := matrix(1, 1, f)", "f(0, 0)")["message"], "nesting too deep")

    def test_absurd_sizes(self):
        for statement, message in [("matrix(1e9, 1e9, f)", "out of memory"), ("matrix(10^300, 1, f)", "matrix too big")]:
            self.assertEqual(self.error("f(i, j) := 0", statement)["message"], message, statement)
        for statement in ["matrix(65535, 65535, f)", "[1, 2][10^300, 0]", "submatrix([1], 0, 10^300, 0, 0)"]:
            with self.subTest(statement=statement):
                self.error("f(i, j) := nobody", statement)

    @unittest.skipIf("ASAN_OPTIONS" in os.environ, "the address sanitizer needs more")
    def test_a_result_that_there_is_no_memory_to_show(self):
        source = "f(i, j) := 1/3\nA := matrix(3000, 3000, f)\nA\n1\n"  # 72 MB, and 180 MB of JSON
        done = run("eval", "--json", stdin=source, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_DATA, (LIMIT, LIMIT)))
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertEqual(done.stdout.splitlines()[2:],
                         ['{"kind":"error","message":"out of memory","index":-1,"function":"","line":3,"column":1}',
                          '{"kind":"number","re":1.0,"im":0.0,"unit":""}'])

    def test_long_names_and_texts(self):
        long = "x" * 1_000_000
        self.assertEqual(self.error(stdin=long)["message"], "undefined name: " + long)
        self.assertLess(len(run("eval", stdin=long).stderr), 2000)
        self.assertLess(len(run("eval", stdin=f'"{long}"').stdout), 20_000)


if __name__ == "__main__":
    unittest.main()
