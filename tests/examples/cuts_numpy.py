"""The cut list of examples/cuts.ws in Python: fractions of an inch, exactly.

usage: cuts_numpy.py     (writes cuts.json beside itself)
"""
import csv
import os
import pathlib
import re
from fractions import Fraction

from recorded import entry, table, write

here = pathlib.Path(__file__).resolve().parent
with open(here.parent.parent / "examples" / "cuts.csv", encoding="utf-8") as file:
    cuts = [(name, int(count), text) for name, count, text in list(csv.reader(file))[1:]]


def inches(text):
    """The numbers before the foot mark, before the hyphen or the end, and of the fraction."""
    feet, _, rest = text.rstrip('"').rpartition("'")
    return 12 * Fraction(feet or 0) + sum(Fraction(part) for part in re.split(r"[ -]", rest.strip()) if part)


def written(length):
    feet, rest = divmod(length, 12)
    whole, fraction = divmod(rest, 1)
    parts = [str(whole)] if whole or not fraction else []
    return f"{feet}' " + "-".join(parts + ([str(fraction)] if fraction else [])) + '"'


board, kerf = Fraction(16 * 12), Fraction(1, 8)
plan = []
for name, count, text in cuts:
    length = inches(text)
    each = (board + kerf) // (length + kerf)
    left = max(board - each * (length + kerf), Fraction(0))
    plan.append((length, [name, count, text, each, -(-count // each), written(left)], left))
rest = next(left for _, row, left in plan if row[0] == "rafter")

os.chdir(here)
write("cuts.json", [
    {"text": written(sum(count * inches(text) for _, count, text in cuts))},
    table([row for _, row, _ in sorted(plan, reverse=True)]), entry(sum(row[4] for _, row, _ in plan), ""),
    {"text": written(rest)}, table([[row[0]] for length, row, _ in plan if length <= rest])])
