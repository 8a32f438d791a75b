"""The other side of bench/python_peer.hpp: takes a line of orders at a time and answers each with one line.

    load NAME ROWS COLS FILE    NAME becomes the matrix whose doubles stand in FILE, column after column
    run CODE                    a statement that prepares something
    expression CODE             what is to be measured
    result FILE                 evaluates it once and writes its doubles to FILE, column after column
    time CALLS                  the seconds that one of so many evaluations takes
"""
import sys
import time

import numpy as np

names = {"np": np}
code = None

for line in sys.stdin:
    order, _, rest = line.rstrip("\n").partition(" ")
    if order == "load":
        name, rows, cols, file = rest.split(" ", 3)
        names[name] = np.fromfile(file).reshape((int(rows), int(cols)), order="F")
        answer = "loaded"
    elif order == "run":
        exec(rest, names)
        answer = "done"
    elif order == "expression":
        code = compile(rest, "expression", "eval")
        answer = "compiled"
    elif order == "result":
        np.asarray(eval(code, names), dtype=float).ravel(order="F").tofile(rest)
        answer = "written"
    elif order == "time":
        calls = int(rest)
        start = time.thread_time()
        for _ in range(calls):
            eval(code, names)
        answer = repr((time.thread_time() - start) / calls)
    else:
        answer = "no order " + order
    print(answer, flush=True)
