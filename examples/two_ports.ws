# A delay line: twenty equal sections of a coil and a capacitor, each a two-port that takes voltage and current at its
# output to those at its input. The matrix of a chain is the product of its parts; every element has a unit of its own.

f := 200 kHz
w := 2 * pi * f
Z := 0.5 ohm + 1i * w * 100 µH
Y := 2 µS + 1i * w * 10 nF

series(Z) := [1, Z; 0 S, 1]
shunt(Y) := [1, 0 ohm; Y, 1]
section := series(Z / 2) * shunt(Y) * series(Z / 2)

"One section"
section
"It is reciprocal: its determinant is 1"
det(section)

line := section^20
"The line"
line

# A load of 90 ohm at the end, 1 V at the input.
load := 90 ohm
ratio := line * [1; 1 / load]
"Input impedance"
ratio[0] / ratio[1]
"Voltage and current at the load"
output := [1 V; 1 V / load] / (ratio[0])
output
"From there back to the input, and forth again through the inverted line"
input := line * output
input
line^-1 * input
