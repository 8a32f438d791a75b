"""The delay line of examples/two_ports.ws by NumPy: nodal analysis of the whole ladder instead of products of two-ports.

usage: two_ports_numpy.py     (writes two_ports.json beside itself; NumPy 1.24, numpy.linalg.solve)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

w = 2 * np.pi * 200e3
Z = 0.5 + 1j * w * 100e-6
Y = 2e-6 + 1j * w * 10e-9


def two_port(sections):
    """Input voltage and current for 1 V and no current at the output, then for 1 A into a short circuit."""
    # Unknowns: the input current, the voltages at the inner nodes (the middle of each section) and what the output leaves
    # open. Half a coil at each end, a whole one between two capacitors.
    columns = []
    for V2, I2 in ((1, 0), (0, 1)):
        n = sections + 2  # input node, middles, output node
        ladder = np.zeros((n + 1, n + 1), complex)  # voltages, then the input current
        right = np.zeros(n + 1, complex)
        for k in range(n - 1):
            branch = 1 / (Z / 2 if k in (0, n - 2) else Z)
            ladder[k, k] += branch
            ladder[k + 1, k + 1] += branch
            ladder[k, k + 1] -= branch
            ladder[k + 1, k] -= branch
        for k in range(1, n - 1):
            ladder[k, k] += Y
        ladder[0, n] = -1      # the input current flows into node 0
        right[n - 1] = -I2     # the output current leaves the last node
        ladder[n, n - 1] = 1   # whose voltage is V2
        right[n] = V2
        solved = np.linalg.solve(ladder, right)
        columns.append([solved[0], solved[n]])
    return np.array(columns).T


volt, ohm, siemens = "kg*m^2*s^-3*A^-1", "kg*m^2*s^-3*A^-2", "kg^-1*m^-2*s^3*A^2"
section, line = two_port(1), two_port(20)
A, B, C, D = line.ravel()
impedance = (A + B / 90) / (C + D / 90)
output = np.array([[1], [1 / 90]]) / (A + B / 90)

os.chdir(pathlib.Path(__file__).resolve().parent)
mixed = [["", ohm], [siemens, ""]]
write("two_ports.json", [entry(section, mixed), entry(1 + 0j, ""), entry(line, mixed), entry(impedance, ohm),
                         entry(output, [[volt], ["A"]]), entry(np.array([[1], [1 / impedance]]), [[volt], ["A"]]),
                         entry(output, [[volt], ["A"]])])
