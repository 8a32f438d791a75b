"""Layout: every C++ file is as clang-format would lay it out.

usage: layout_test.py ROOT CLANG_FORMAT
"""
import pathlib
import subprocess
import sys

root = pathlib.Path(sys.argv[1])
files = [str(path) for folder in ("include", "src", "tests", "bench") for path in sorted((root / folder).rglob("*.[ch]pp"))]
result = subprocess.run([sys.argv[2], "--dry-run", "--Werror", *files], check=False)
if result.returncode != 0:
    sys.exit("next: ./dev format")
