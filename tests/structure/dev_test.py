"""The script ./dev: its help names every command, and `setup` asks for nothing but what is missing.

usage: dev_test.py ROOT
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest


def dev(*arguments, **environment):
    return subprocess.run([str(ROOT / "dev"), *arguments], capture_output=True, text=True, check=False,
                          env={**os.environ, **environment})


class Dev(unittest.TestCase):
    def test_shell_syntax(self):
        for script in ("dev", ".ci/run"):
            result = subprocess.run(["bash", "-n", str(ROOT / script)], capture_output=True, text=True, check=False)
            self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_under_150_lines(self):
        self.assertLess(len((ROOT / "dev").read_text(encoding="utf-8").splitlines()), 150)

    def test_help_lists_every_command(self):
        dispatch = (ROOT / "dev").read_text(encoding="utf-8").partition("\ncase $command in\n")[2]
        commands = re.findall(r"^    ([a-z]+)(?: \|[^)]*)?\)", dispatch, re.MULTILINE)
        self.assertGreaterEqual(set(commands), {"setup", "build", "run", "test", "bench", "format", "lint", "help"})
        text = dev("help").stdout
        for command in commands:
            self.assertRegex(text, rf"(?m)^  {command}\b")

    def test_unknown_command(self):
        result = dev("no_such_command")
        self.assertEqual(result.returncode, 2)
        self.assertIn("./dev help", result.stderr)


class Setup(unittest.TestCase):
    """Runs `setup` on a machine made of stand-ins, which write down what they are asked."""

    def setup(self, installed):
        with tempfile.TemporaryDirectory() as folder:
            log = pathlib.Path(folder, "log")
            log.touch()
            query = 'shift 2; printf "installed %s\\n" "$@"' if installed else "exit 1"
            for name, body in (("dpkg-query", query), ("apt-get", f'echo "apt-get $*" >>"{log}"'),
                               ("sudo", f'echo sudo >>"{log}"; exec "$@"')):
                script = pathlib.Path(folder, name)
                script.write_text(f"#!/bin/bash\n{body}\n", encoding="utf-8")
                script.chmod(0o755)
            result = dev("setup", PATH=folder + os.pathsep + os.environ["PATH"])
            return result, log.read_text(encoding="utf-8").splitlines()

    def test_all_is_there(self):
        result, asked = self.setup(installed=True)
        self.assertEqual((result.returncode, asked), (0, []))
        self.assertIn("all packages are installed", result.stderr)

    def test_all_is_missing(self):
        result, asked = self.setup(installed=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        sudo = [line for line in asked if line == "sudo"]
        update, install = (line for line in asked if line != "sudo")
        self.assertEqual(len(sudo), 0 if os.geteuid() == 0 else 2)
        self.assertEqual(update, "apt-get update")
        self.assertRegex(install, r"^apt-get install --yes .*\bg\+\+ cmake ninja-build\b")


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv.pop(1))
    unittest.main()
