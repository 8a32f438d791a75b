"""The price list of examples/prices.ws in Python: comprehensions over the rows.

usage: prices_numpy.py     (writes prices.json beside itself)
"""
import csv
import os
import pathlib

from recorded import entry, table, write

here = pathlib.Path(__file__).resolve().parent


def cell(text):
    try:
        return float(text)
    except ValueError:
        return text


with open(here.parent.parent / "examples" / "prices.csv", encoding="utf-8") as file:
    rows = [[cell(text) for text in row] for row in list(csv.reader(file))[1:]]
priced = [row for row in rows if not isinstance(row[3], str)]
by_article = {row[0]: row for row in rows}


def column(rows_of, j=0):
    return table([[row[j]] for row in rows_of])


groups = list(dict.fromkeys(row[1] for row in rows))
summary = []
for group in groups:
    prices = [row[3] for row in priced if row[1] == group]
    summary.append([sum(row[1] == group for row in rows), len(prices), min(prices), max(prices)])

order = [("hex bolt M12x80", 60), ("nut M12", 120), ("flat bar 60x8, 6 m", 18), ("plate 4 mm, cut", 75.5), ("lock nut M12", 120)]
amounts = [count * by_article[name][3] * (0.9 if count >= by_article[name][4] else 1) for name, count in order]
bolts = sorted((row for row in priced if row[1] == "bolts"), key=lambda row: -row[3])

os.chdir(here)
write("prices.json", [
    column([by_article["nut M12"]], 3), column([by_article["nut M12"]], 2),
    column(row for row in rows if row[3] == "on request"),
    column(row for row in priced if row[3] >= 5), column(row for row in priced if 1.5 <= row[3] <= 2),
    column([min(priced, key=lambda row: row[3])]), table(bolts),
    table([[g] for g in groups]), table(summary),
    table([row[:4] for row in sorted(rows, key=lambda row: row[0])[:4]]),
    table([[*line, amount] for line, amount in zip(order, amounts)]), entry(sum(amounts), "")])
