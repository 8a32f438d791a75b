"""Includes point down: every folder includes itself and the folders that the table below grants it.

usage: include_direction_test.py ROOT
"""
import pathlib
import re
import sys
import tempfile
import unittest

HOST = {"efiutl", "host"}
MAY_INCLUDE = {
    "efiutl": set(),
    "host": {"efiutl"},
    "kernels": {"efiutl"},
    "frame": HOST | {"public", "kernels"},
    "lapack": HOST | {"public", "frame"},
    "lookup": HOST | {"public", "frame", "kernels"},
    "arrays": HOST | {"public", "frame"},
    "scalar": HOST | {"public", "frame"},
    "algebra": HOST | {"public", "lapack", "frame", "kernels"},
    "functions": HOST | {"public", "lookup", "arrays", "scalar", "algebra", "lapack", "frame", "kernels"},
    "public": HOST,  # include/bailuxsko/: what a host sees of the library
    "worksheet": HOST | {"functions", "function tables"},
    "program": {"worksheet", "function tables"},
}
FUNCTION_TABLES = ("bailuxhost/function_row.hpp", "bailuxsko/function_table.hpp")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
OURS = ("efiutl", "host", "bailuxhost", "bailuxsko", "worksheet", "program")


def folder_of(path):
    """The table's word for a file, named from the root: src/bailuxsko/kernels/lu.cpp is of `kernels`."""
    top, part, *rest = path.parts
    if top == "include":
        return {"bailuxhost": "host", "bailuxsko": "public"}.get(part, part)
    return rest[0] if part == "bailuxsko" and len(rest) > 1 else part


def included(root, name):
    """The file that `#include "name"` means."""
    for base in ("include", "src"):
        if (root / base / name).is_file():
            return pathlib.Path(base, name)
    return None


def offences(root):
    """One line for every include that the table does not grant."""
    found = []
    for base in ("include", "src"):
        for file in sorted((root / base).rglob("*.[hc]pp")):
            path = file.relative_to(root)
            of = folder_of(path)
            for bracket, name in INCLUDE.findall(file.read_text(encoding="utf-8")):
                if bracket == "<" and name.split("/")[0] not in OURS:
                    continue
                target = included(root, name)
                if bracket == "<":
                    found.append(f'{path}: <{name}> is ours, write "{name}"')
                elif target is None:
                    found.append(f'{path}: "{name}" is neither under include/ nor under src/')
                elif of not in MAY_INCLUDE:
                    found.append(f"{path}: no arrows are drawn for folder {of}")
                elif name in FUNCTION_TABLES and "function tables" in MAY_INCLUDE[of]:
                    continue
                elif folder_of(target) not in MAY_INCLUDE[of] | {of}:
                    found.append(f'{path}: {of} may not include "{name}", which is of {folder_of(target)}')
                elif base == "include" and target.parts[0] != "include":
                    found.append(f'{path}: a public header includes the private "{name}"')
    return found


class IncludeDirection(unittest.TestCase):
    def test_tree(self):
        self.assertEqual(offences(ROOT), [])

    def test_planted_arrows_are_caught(self):
        planted = [
            ("src/bailuxsko/kernels/lu.cpp", "bailuxsko/frame/call.hpp", "kernels may not include"),
            ("src/bailuxsko/kernels/qr.cpp", "bailuxhost/value.hpp", "kernels may not include"),
            ("src/bailuxsko/frame/call.cpp", "bailuxsko/lapack/gesv.hpp", "frame may not include"),
            ("src/bailuxsko/lapack/gesv.cpp", "bailuxsko/kernels/lu.hpp", "lapack may not include"),
            ("src/efiutl/arena.cpp", "bailuxhost/value.hpp", "efiutl may not include"),
            ("src/host/evl/error.cpp", "worksheet/lexer.hpp", "host may not include"),
            ("src/worksheet/lexer.cpp", "bailuxsko/frame/call.hpp", "worksheet may not include"),
            ("src/worksheet/parser.hpp", "bailuxsko/lu.hpp", "worksheet may not include"),
            ("src/program/main.cpp", "bailuxhost/value.hpp", "program may not include"),
            ("include/bailuxhost/unit.hpp", "host/qud/table.hpp", "includes the private"),
            ("src/worksheet/parser.cpp", "lexer.hpp", "neither under include/ nor under src/"),
            ("src/stray/lu.cpp", "bailuxsko/kernels/lu.hpp", "no arrows are drawn"),
        ]
        granted = [
            ("src/bailuxsko/frame/lu.cpp", "bailuxsko/kernels/lu.hpp"),
            ("src/bailuxsko/algebra/inverse.cpp", "bailuxsko/lapack/gesv.hpp"),
            ("src/host/qud/value.cpp", "efiutl/records.hpp"),
            ("src/program/functions.cpp", "bailuxsko/function_table.hpp"),
        ]
        headers = {include for _, include, _ in planted} | {include for _, include in granted}
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name in headers - {"lexer.hpp"}:
                public = name.startswith(("bailuxhost/", "efiutl/")) or name.count("/") == 1 and name[0] == "b"
                write(root / ("include" if public else "src") / name, "")
            for name, include, *_ in planted + granted:
                write(root / name, f'#include "{include}"\n')
            found = offences(root)
        for name, _, reason in planted:
            self.assertTrue(any(line.startswith(name) and reason in line for line in found), f"{name} slipped through")
        self.assertEqual(len(found), len(planted))


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv.pop(1))
    unittest.main()
