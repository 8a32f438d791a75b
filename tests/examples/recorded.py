"""How the scripts of this folder write down what they computed: one entry for each value that the worksheet shows."""
import json

import numpy as np


def entry(value, unit):
    """A matrix or number in SI units, rows in order; complex elements as [re, im]; rows of units where they are mixed."""
    def element(x):
        return [x.real, x.imag] if isinstance(x, complex) else x
    if isinstance(value, np.ndarray):
        return {"units" if isinstance(unit, list) else "unit": unit, "data": [[element(x) for x in row] for row in value.tolist()]}
    return {"unit": unit, "number": [complex(value).real, complex(value).imag]}


def table(rows, unit=""):
    """Rows of numbers and texts; one unit for the numbers, or rows of units with "" where a text stands."""
    data = [[{"text": x} if isinstance(x, str) else float(x) for x in row] for row in rows]
    return {"units" if isinstance(unit, list) else "unit": unit, "data": data}


def write(name, entries):
    with open(name, "w", encoding="utf-8") as file:
        file.write("[\n" + ",\n".join(json.dumps(e) for e in entries) + "\n]\n")
