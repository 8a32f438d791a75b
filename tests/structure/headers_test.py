"""Headers: each compiles alone, is ASCII and opens with #pragma once.

usage: headers_test.py ROOT COMPILER FLAG...
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys
import unittest


def headers():
    return sorted(path for base in ("include", "src") for path in (ROOT / base).rglob("*.hpp"))


def compile_alone(header):
    """What the compiler says about the header by itself."""
    command = [*COMPILER, "-fsyntax-only", "-Werror", "-x", "c++", "-include", str(header), os.devnull]
    return subprocess.run(command, capture_output=True, text=True, check=False).stderr


class Headers(unittest.TestCase):
    def test_each_compiles_alone(self):
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for header, complaint in zip(headers(), pool.map(compile_alone, headers())):
                with self.subTest(header=str(header)):
                    self.assertEqual(complaint, "")

    def test_ascii_and_pragma_once(self):
        for header in headers():
            with self.subTest(header=str(header)):
                text = header.read_bytes()
                self.assertTrue(text.isascii(), "not ASCII")
                self.assertEqual(text.count(b"\n#pragma once\n") + text.startswith(b"#pragma once\n"), 1)


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv[1])
    COMPILER = sys.argv[2:]
    unittest.main(argv=sys.argv[:1])
