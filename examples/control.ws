# A motor that turns a load through an elastic shaft, in state space:
#   d(state)/dt = a * state + b * voltage,   output = c * state + d * voltage
# The states are the current (A), the speed of the motor (1/s), the twist of the shaft (a number) and the speed of the load
# (1/s); the outputs are the current and the speed of the load. Every element has the unit of its place.

R := 0.5 ohm
inductance := 2 mH
torque := 0.08 N*m/A
J1 := 2 kg*cm^2
J2 := 8 kg*cm^2
shaft := 15 N*m
damping := 0.004 N*m*s
friction := 0.001 N*m*s

a := [-R / inductance, -torque / inductance,       0 A/s,       0 A;
      torque / J1,     -(friction + damping) / J1, -shaft / J1, damping / J1;
      0 s^-1/A,        1,                          0 s^-1,      -1;
      0 s^-2/A,        damping / J2,               shaft / J2,  -damping / J2]
b := [1 / inductance; 0 s^-2/V; 0 s^-1/V; 0 s^-2/V]
c := [1,   0 A*s, 0 A,    0 A*s;
      0 s^-1/A, 0,  0 s^-1, 1]
d := [0 A/V; 0 s^-1/V]

# a^0 is the identity matrix with the units that the places of a ask for.
unity := a^0

"Current and speed of the load for each volt that stands still"
response(p) := c * (p * unity - a)^-1 * b + d
response(0 Hz)

# On the imaginary axis, p = 2i * pi * frequency: gains in decibels of 1 A/V and 1 s^-1/V, phases in degrees.
frequency := [0.5; 1; 2; 5; 10; 20; 30; 50; 100] * Hz
turning(k) := 2i * pi * frequency[k]
decibels(x) := 20 * log10(abs(x))
bode(k, column) := if(column == 0, frequency[k] / (1 Hz), if(column == 1, decibels(shown(k)), arg(shown(k)) / (1 deg)))

"Speed of the load: frequency in Hz, gain in dB, phase in degrees"
shown(k) := response(turning(k))[1] / (1 s^-1/V)
matrix(rows(frequency), 3, bode)
"Current: the same"
shown(k) := response(turning(k))[0] / (1 A/V)
matrix(rows(frequency), 3, bode)

"The impedance that the amplifier sees at 20 Hz, 30 Hz and 50 Hz"
impedance(k, column) := 1 / response(turning(k + 5))[0]
matrix(3, 1, impedance)

# The characteristic polynomial: at 0 the product of the poles.
characteristic(p) := det(p * unity - a)
"Product of the poles; the polynomial at 50 Hz"
characteristic(0 Hz)
characteristic(turning(7))

# A feedback of all states, voltage = -feedback * state, moves the poles: a becomes a - b * feedback.
feedback := [0.4 V/A, 0.2 V*s, -65 V, -0.092 V*s]
closed := a - b * feedback
"Return difference at 50 Hz: 1 and the gain of the loop, then the ratio of the two polynomials"
1 + feedback * (turning(7) * unity - a)^-1 * b
det(turning(7) * unity - closed) / characteristic(turning(7))
"Speed of the load with the feedback"
shown(k) := (c * inv(turning(k) * unity - closed) * b + d)[1] / (1 s^-1/V)
matrix(rows(frequency), 3, bode)
