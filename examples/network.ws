# Node voltages of an alternating-current network, by nodal analysis: Y * voltage = I.
# A source of 230 V behind an inductance feeds node 1; node 2 carries a motor with a capacitor beside it, node 3 a heater.

f := 50 Hz
w := 2 * pi * f

# Admittances between the nodes and from the nodes to earth.
coil(R, L) := 1 / (R + 1i * w * L)
source := coil(0.2 ohm, 2 mH)
line_12 := coil(0.4 ohm, 1.2 mH)
line_23 := coil(0.6 ohm, 1.8 mH)
line_13 := coil(0.5 ohm, 1.5 mH)
motor := coil(9 ohm, 24 mH)
capacitor := 1i * w * 80 µF
heater := 1 / (22 ohm)

Y := [source + line_12 + line_13, -line_12, -line_13; -line_12, line_12 + line_23 + motor + capacitor, -line_23; -line_13, -line_23, line_13 + line_23 + heater]

I := [source * 230 V; 0 A; 0 A]
voltage := lsolve(Y, I)

"Voltages at the nodes"
voltage

"Their moduli"
modulus(z) := sqrt(Re(z * conj(z)))
[modulus(voltage[0]); modulus(voltage[1]); modulus(voltage[2])]

"Their angles"
[arg(voltage[0]); arg(voltage[1]); arg(voltage[2])] -> deg

"Current of the source"
drawn := source * (230 V - voltage[0])
drawn

"Power that the source gives: active, reactive"
power := 230 V * conj(drawn)
[Re(power); Im(power)] -> kW
