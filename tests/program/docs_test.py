"""Every worksheet that a page shows, with the output that stands below it; and the reference page is not stale.

usage: docs_test.py PROGRAM ROOT
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop()).resolve()

from program import ENVIRONMENT, PROGRAM, run  # noqa: E402  (reads the program from the arguments)

BLOCK = re.compile(r"^```worksheet\n(?P<source>.*?)^```\n(?:```output\n(?P<output>.*?)^```\n)?", re.DOTALL | re.MULTILINE)


def shown(source):
    """What evaluating a worksheet shows, results and errors in their order."""
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "sheet.ws").write_text(source, encoding="utf-8")
        return subprocess.run([PROGRAM, "run", "sheet.ws"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              cwd=folder, env=ENVIRONMENT, timeout=60, check=False).stdout


class Docs(unittest.TestCase):
    maxDiff = None

    def test_worksheets_show_what_stands_below_them(self):
        seen = 0
        for page in (ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))):
            if page.name == "functions.md":  # compared as a whole below
                continue
            for block in BLOCK.finditer(page.read_text(encoding="utf-8")):
                seen += 1
                with self.subTest(page=page.name, worksheet=block["source"]):
                    self.assertEqual(shown(block["source"]), block["output"] or "")
        self.assertGreater(seen, 5)

    def test_the_reference_page_is_not_stale(self):
        page = (ROOT / "docs" / "functions.md").read_text(encoding="utf-8")
        self.assertEqual(page, run("functions", "--markdown").stdout,
                         "next: build/release/bin/bailuxsko functions --markdown > docs/functions.md")


if __name__ == "__main__":
    unittest.main()
