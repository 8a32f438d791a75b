"""The worksheets of examples/ against values from an independent source: NAME.json, written by NAME_numpy.py.

usage: examples_test.py PROGRAM EXAMPLES
"""
import json
import pathlib
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
TOLERANCE = 1e-9  # of the largest element of one unit


def flat(data):
    """The real numbers and the texts of nested rows, whatever their depth."""
    return [x for row in data for x in flat(row)] if isinstance(data, list) else [data]


def is_text(x):
    return isinstance(x, dict)


class Examples(unittest.TestCase):
    def test_each_is_recorded(self):
        self.assertEqual({file.stem for file in EXAMPLES.glob("*.ws")}, {file.stem for file in HERE.glob("*.json")})

    def test_values(self):
        for recorded in sorted(HERE.glob("*.json")):
            done = subprocess.run([PROGRAM, "run", "--json", EXAMPLES / f"{recorded.stem}.ws"], capture_output=True,
                                  text=True, timeout=60, check=False)
            results = [json.loads(line) for line in done.stdout.splitlines()]
            self.assertEqual([r for r in results if r["kind"] == "error"], [], recorded.stem)
            self.assertEqual(done.returncode, 0, done.stderr)
            expected = json.loads(recorded.read_text(encoding="utf-8"))
            # other texts than the recorded ones are headings
            shown = [r for r in results if r["kind"] in ("number", "matrix") or {"text": r.get("text")} in expected]
            self.assertEqual(len(shown), len(expected), recorded.stem)
            for k, (result, wanted) in enumerate(zip(shown, expected)):
                with self.subTest(example=recorded.stem, value=k):
                    self.compare(result, wanted)

    def compare(self, result, wanted):
        if "text" in wanted or result["kind"] == "text":
            self.assertEqual(result.get("text"), wanted.get("text"))
            return
        if "number" in wanted:
            result = {"unit": result["unit"], "data": [[[result["re"], result["im"]]]]}
            wanted = {"unit": wanted["unit"], "data": [[wanted["number"]]]}
        for key in ("unit", "units"):
            self.assertEqual(result.get(key), wanted.get(key))
        units = [unit for row in wanted.get("units", []) for unit in row]
        got = [flat(x) for row in result["data"] for x in row]
        want = [flat(x) for row in wanted["data"] for x in row]
        self.assertEqual([len(x) for x in got], [len(x) for x in want])
        for unit in set(units or [""]):
            alike = [k for k in range(len(want)) if not units or units[k] == unit]
            scale = max((abs(x) for k in alike for x in want[k] if not is_text(x)), default=0.0)
            for k in alike:
                for x, y in zip(got[k], want[k]):
                    if is_text(x) or is_text(y):
                        self.assertEqual(x, y, f"element {k}")
                    else:
                        self.assertLessEqual(abs(x - y), TOLERANCE * scale, f"element {k}")


if __name__ == "__main__":
    EXAMPLES = pathlib.Path(sys.argv.pop()).resolve()
    PROGRAM = sys.argv.pop()
    unittest.main()
