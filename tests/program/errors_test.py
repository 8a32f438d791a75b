"""Errors as people read them: message, place, source, caret, what was found there. Each text is written by hand.

usage: errors_test.py PROGRAM
"""
import pathlib
import tempfile
import unittest

from program import run


class Errors(unittest.TestCase):
    maxDiff = None

    def shows(self, source, expected, **options):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "t.ws").write_bytes(source.encode() if isinstance(source, str) else source)
            self.assertEqual(run("run", "t.ws", folder=folder, **options).stderr, expected)

    def test_an_argument(self):
        self.shows("K := [1, 2, 3; 4, 5, 6]\nd := lu(K) * 2\n",
                   "error: must be square\n"
                   "  t.ws:2 |  d := lu(K) * 2\n"
                   "         |          ^ argument 1 of lu is 2 by 3\n")

    def test_the_call_as_a_whole(self):
        self.shows("1 + lu([1, 2; 2, 4])\n",
                   "error: singular matrix\n"
                   "  t.ws:1 |  1 + lu([1, 2; 2, 4])\n"
                   "         |      ^\n")

    def test_an_unknown_name(self):
        self.shows("length2 := 3\nlenght2 + 1\n",
                   "error: undefined name: lenght2\n"
                   "  t.ws:2 |  lenght2 + 1\n"
                   "         |  ^ did you mean length2 or length?\n")

    def test_a_statement_of_several_lines(self):
        self.shows("# first\nlu([1, 2,\n    3; 4, 5,\n    nobody_near])\n",
                   "error: undefined name: nobody_near\n"
                   "  t.ws:4 |      nobody_near])\n"
                   "         |      ^\n")

    def test_line_ends_of_two_characters(self):
        self.shows("lu([1, 2,\r\n nobody_near])\r\n",
                   "error: undefined name: nobody_near\n"
                   "  t.ws:2 |   nobody_near])\n"
                   "         |   ^\n")

    def test_tabs_and_wide_characters_before_the_caret(self):
        self.shows('["\t\u4e2d\u6587", nobody_near]\n',
                   "error: undefined name: nobody_near\n"
                   '  t.ws:1 |  [" \u4e2d\u6587", nobody_near]\n'
                   "         |            ^\n")

    def test_a_long_line_is_cut_around_the_caret(self):
        self.shows("1" + " + 1" * 100 + " + nobody_near" + " + 1" * 100 + "\n",
                   "error: undefined name: nobody_near\n"
                   # 100 cells: 12 before the source, then two thirds of the rest before the caret
                   "  t.ws:1 |  ..." + " + 1" * 13 + " + nobody_near" + " + 1" * 4 + "...\n"
                   "         |  " + " " * 58 + "^\n")

    def test_units(self):
        self.shows("1 m + 2 s\n",
                   "error: unit mismatch\n"
                   "  t.ws:1 |  1 m + 2 s\n"
                   "         |      ^ unit m beside unit s\n")

    def test_units_of_one_element(self):
        self.shows("K := [1 N/m, 2 N; 3 N, 4 N*m]\nK - [1 N/m, 2 N; 3 N, 4 m]\nK + 1 N\n"
                   "[5, K] - [5, [1 N/m, 2 N; 3 N, 4]]\n",
                   "error: unit mismatch\n"
                   "  t.ws:2 |  K - [1 N/m, 2 N; 3 N, 4 m]\n"
                   "         |    ^ row 2, column 2: unit kg*m^2*s^-2 beside unit m\n"
                   "error: unit mismatch\n"
                   "  t.ws:3 |  K + 1 N\n"
                   "         |    ^ row 1, column 1: unit kg*s^-2 beside unit kg*m*s^-2\n"
                   "error: unit mismatch\n"
                   "  t.ws:4 |  [5, K] - [5, [1 N/m, 2 N; 3 N, 4]]\n"
                   "         |         ^ row 1, column 2: unit kg*m^2*s^-2 beside no unit\n")

    def test_a_syntax_error(self):
        done = run("eval", "1 +* 2")
        lines = done.stderr.splitlines()
        self.assertTrue(lines[0].startswith("error: syntax error"), done.stderr)
        self.assertEqual(lines[1], "  |  1 +* 2")
        self.assertEqual(lines[2][:9], "  |     ^")

    def test_rows_of_unequal_length(self):
        self.shows("[1, 2; 3]\n[1; 2, 3]\n",
                   "error: syntax error: this row has 1 element, the first one 2\n"
                   "  t.ws:1 |  [1, 2; 3]\n"
                   "         |         ^\n"
                   "error: syntax error: this row has 2 elements, the first one 1\n"
                   "  t.ws:2 |  [1; 2, 3]\n"
                   "         |      ^\n")

    def test_control_characters_do_not_reach_the_terminal(self):
        self.assertNotIn("\x1b", run("eval", '"\x1b[31m" + 1').stderr)


if __name__ == "__main__":
    unittest.main()
