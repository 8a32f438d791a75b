"""Infinities and NaN in every position, given to all functions that hand their matrix to LAPACK: each statement has its
answer, in time, and nothing but JSON reaches standard output.

usage: not_finite_test.py PROGRAM
"""
import json
import unittest

from program import results, run

OF_A_MATRIX = ["LU({0})", "QR({0})", "QR({0}, 0)", "lsolve({0}, {0})", "mult({0}, transpose({0}))"]
OF_A_TALL_ONE = ["svds({0})", "SVD({0})"]
OF_A_SQUARE_ONE = ["Cholesky({0})", "Cholesky({0}, 0)", "Cholesky({0}, 1, 1)", "Cholesky({0}, 0, 1)", "det({0})", "inv({0})",
                   "eigenvals({0})", "eigenvecs({0})", "eigenvecs({0}, \"L\")", "genvals({0}, identity({1}))",
                   "genvals(identity({1}), {0})", "genvecs({0}, identity({1}))"]
REFUSED = {"svds", "SVD", "eigenvals", "eigenvecs", "genvals", "genvecs"}


def literal(rows):
    return "[" + "; ".join(", ".join(row) for row in rows) + "]"


def matrices(m, n):
    """With one such element in each place, and with nothing else; in the real or the imaginary part."""
    ordinary = [[str((7 * i + 3 * j + 1) % 5 + (6 if i == j else 0)) for j in range(n)] for i in range(m)]
    for odd in ("NaN", "inf", "-inf"):
        planted = [[[odd if (i, j) == (p, q) else ordinary[i][j] for j in range(n)] for i in range(m)]
                   for p in range(m) for q in range(n)]
        for rows in [*planted, [[odd] * n] * m]:
            yield literal(rows)
            yield f"complex({literal(rows)})"
            yield f"complex({literal(ordinary)}, {literal(rows)})"


def statements():
    yield "set strict_singularity_checking off"
    for m, n in ((1, 1), (2, 2), (3, 2), (2, 3), (4, 4), (12, 11)):
        calls = OF_A_MATRIX + (OF_A_TALL_ONE if m >= n else []) + (OF_A_SQUARE_ONE if m == n else [])
        for k, A in enumerate(matrices(m, n)):
            if m < 12 or k % 29 == 0:
                yield from (call.format(A, n) for call in calls)


class NotFinite(unittest.TestCase):
    def test_every_statement_is_answered_in_json(self):
        asked = list(statements())
        done = run("eval", "--json", stdin="\n".join(asked) + "\n", timeout=120)
        self.assertIn(done.returncode, (0, 1), done.stderr[:500])
        self.assertEqual(done.stderr, "")
        lines = done.stdout.splitlines()
        self.assertEqual(len(lines), len(asked))
        for statement, line in zip(asked, lines):
            answer = json.loads(line)
            name = statement.split("(")[0]
            if name in REFUSED and not statement.startswith("genvals(identity(1)"):
                self.assertEqual(answer.get("message"), "not converging", statement)

    def test_the_next_statement_is_well(self):
        found = results("eval", "--json", "SVD([1, inf; NaN, 2])", "svds([3, 0; 0, 4])")
        self.assertEqual(found[0]["message"], "not converging")
        self.assertAlmostEqual(found[1]["data"][0][0], 4.0)


if __name__ == "__main__":
    unittest.main()
