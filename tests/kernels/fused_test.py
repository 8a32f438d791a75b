"""The library holds no fused multiply-add: it rounds once where the plain loops round twice.

usage: fused_test.py OBJECT...
"""
import re
import subprocess
import sys
import unittest

FUSED = re.compile(r"\bvfn?m(?:add|sub|addsub|subadd)\w*")


def fused_instructions(listing):
    return sorted(set(FUSED.findall(listing)))


class Fused(unittest.TestCase):
    def test_there_are_objects(self):
        self.assertGreater(len(OBJECTS), 1)

    def test_no_object_has_any(self):
        with_code = 0
        for path in OBJECTS:
            with self.subTest(object=path):
                listing = subprocess.run(["objdump", "--disassemble", "--no-show-raw-insn", path], check=True,
                                         capture_output=True, text=True).stdout
                with_code += ">:" in listing  # a file of data alone has none
                self.assertEqual(fused_instructions(listing), [])
        self.assertGreater(with_code, len(OBJECTS) / 2)

    def test_each_kind_is_caught(self):
        for name in ("vfmadd231pd", "vfmsub132sd", "vfnmadd213pd", "vfnmsub231sd", "vfmaddsub132pd", "vfmsubadd213pd"):
            self.assertEqual(fused_instructions(f"  4005d0:\t{name} %ymm0,%ymm1,%ymm2\n"), [name])
        self.assertEqual(fused_instructions("  4005d0:\tvmulpd %ymm0,%ymm1,%ymm2\n"), [])


if __name__ == "__main__":
    OBJECTS = [path for path in sys.argv[1:] if path.endswith(".o")]
    unittest.main(argv=sys.argv[:1])
