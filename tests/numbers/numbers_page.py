"""The table of docs/numbers.md: the worst ratio of every function, as the property tests have measured it.

usage: numbers_page.py PAGE [--write] RATIOS...

RATIOS are the files that the property tests wrote, one worst ratio a line: function, residual, ratio, kind, n, bound,
and the worst of matrices of 100 rows and more, -1 where none were measured.
With --write the page gets them; without, the page must hold them already: those of the library's own routines to the
digit, since they are the same everywhere, of those that LAPACK has a part in (lapack.tsv) the rows only.
"""
import pathlib
import sys

BEGIN = "<!-- measured -->\n"
END = "<!-- end of what is measured -->\n"
HEAD = ["| function | what is left | worst ratio | bound | on | n | from n = 100 on |",
        "| --- | --- | --- | --- | --- | --- | --- |"]


def digits(ratio):
    """Two of them; no exponent where the number is large."""
    return f"{ratio:.2g}" if ratio < 99.5 else f"{ratio:.0f}"


def rows(path):
    """(key, the whole row of the table) for each line of a file of ratios."""
    for line in path.read_text(encoding="utf-8").splitlines():
        function, residual, ratio, kind, n, bound, large = line.split("\t")
        key = f"| `{function}` | {residual} |" if " " not in function else f"| {function} | {residual} |"
        of_large = digits(float(large)) if float(large) >= 0 else ""
        yield key, f"{key} {digits(float(ratio))} | {float(bound):g} | {kind} | {n} | {of_large} |"


def table(paths):
    found = sorted((row for path in paths for row in rows(path)), key=lambda row: row[0].replace("`", "").lower())
    return "\n".join(HEAD + [row for _, row in found]) + "\n"


def stale(page, paths):
    """What a table lacks or holds too much, as lines to show."""
    held = {line for line in page.splitlines() if line.startswith("| ")} - set(HEAD)
    keys = set()
    faults = []
    for path in paths:
        for key, row in rows(path):
            keys.add(key)
            mine = [line for line in held if line.startswith(key)]
            if not mine or (path.name != "lapack.tsv" and mine != [row]):
                faults.append(f"measured:  {row}\nthe page:  {' '.join(mine) or 'has no such row'}")
    faults += [f"nothing measures:  {line}" for line in held if not any(line.startswith(key) for key in keys)]
    return faults


def main(arguments):
    write = "--write" in arguments
    page, *paths = [pathlib.Path(argument) for argument in arguments if argument != "--write"]
    text = page.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    measured, after = rest.split(END)
    if write:
        page.write_text(before + BEGIN + table(paths) + END + after, encoding="utf-8")
        return 0
    faults = stale(measured, paths)
    print(*faults, sep="\n")
    if faults:
        print("next: ./dev numbers")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
