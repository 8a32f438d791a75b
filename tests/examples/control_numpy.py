"""The motor of examples/control.ws by impedances, from the load back to the voltage: no system is solved. Only the
characteristic polynomial takes a matrix, for its eigenvalues.

usage: control_numpy.py     (writes control.json beside itself; NumPy 1.24, numpy.linalg.eigvals)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

R, L, torque = 0.5, 2e-3, 0.08
J1, J2 = 2e-4, 8e-4
shaft, damping, friction = 15.0, 0.004, 0.001
frequency = np.array([0.5, 1, 2, 5, 10, 20, 30, 50, 100])
turning = 2j * np.pi * frequency


def states(p):
    """Current, motor's speed, twist and load's speed for 1 V."""
    coupling = shaft / p + damping
    followed = coupling / (coupling + J2 * p)  # load's speed for each of the motor's
    mechanical = J1 * p + friction + followed * J2 * p
    current = 1 / (R + L * p + torque**2 / mechanical)
    motor = torque * current / mechanical
    return np.array([current, motor, (1 - followed) * motor / p, followed * motor])


x = np.array([states(p) for p in turning])
still = 1 / (R + torque**2 / friction)  # the motor only overcomes its friction
a = np.array([[-R / L, -torque / L, 0, 0],
              [torque / J1, -(friction + damping) / J1, -shaft / J1, damping / J1],
              [0, 1, 0, -1], [0, damping / J2, shaft / J2, -damping / J2]])
poles = np.linalg.eigvals(a)
difference = 1 + x @ np.array([0.4, 0.2, -65, -0.092])


def bode(gain):
    return entry(np.column_stack([frequency, 20 * np.log10(np.abs(gain)), np.degrees(np.angle(gain))]), "")


os.chdir(pathlib.Path(__file__).resolve().parent)
per_volt = "kg^-1*m^-2*s^2*A"
write("control.json", [
    {"units": [["kg^-1*m^-2*s^3*A^2"], [per_volt]], "data": [[still], [torque * still / friction]]},
    bode(x[:, 3]), bode(x[:, 0]), entry(1 / x[5:8, :1], "kg*m^2*s^-3*A^-2"),
    entry(np.prod(-poles), "s^-4"), entry(np.prod(turning[7] - poles), "s^-4"),
    entry(difference[7], ""), entry(difference[7], ""), bode(x[:, 3] / difference)])
