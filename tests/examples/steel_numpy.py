"""The beam of examples/steel.ws in Python: plain loops over the rows of the table.

usage: steel_numpy.py     (writes steel.json beside itself)
"""
import csv
import os
import pathlib

from recorded import entry, table, write

here = pathlib.Path(__file__).resolve().parent
with open(here.parent.parent / "examples" / "sections.csv", encoding="utf-8") as file:
    sections = [[cell if k < 2 else float(cell) for k, cell in enumerate(row)] for row in list(csv.reader(file))[1:]]

ipe = next(row for row in sections if row[0] == "IPE 300")
families = list(dict.fromkeys(row[1] for row in sections))
span, q, E = 6.4, 14e3, 210e9
W_needed = q * span**2 / 8 / (235e6 / 1.5)
I_needed = 5 * q * span**3 * 300 / (384 * E)


def fitting(depth):
    rows = [r for r in sections if r[7] * 1e-6 >= W_needed and r[6] * 1e-8 >= I_needed and r[2] <= depth]
    return sorted(rows, key=lambda r: r[5])


deep, shallow = fitting(310), fitting(240)
bent = [[5 * q * span**4 / (384 * E * row[6] * 1e-8)] for row in (deep[0], shallow[0])]

os.chdir(here)
write("steel.json", [
    entry(ipe[2] * 1e-3, "m"), entry(ipe[5], "kg*m^-1"), entry(ipe[6] * 1e-8, "m^4"), table([[f] for f in families]),
    entry(W_needed, "m^3"), entry(I_needed, "m^4"), table(deep), table(shallow[:1]),
    entry((shallow[0][5] - deep[0][5]) * span, "kg"), table(bent, "m")])
