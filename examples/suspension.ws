# A wheel suspension as a control system: body on spring and damper, wheel on its tyre, the road as input. The states are
# the heights and speeds of body and wheel, so the system's matrix has a unit per row and column.

body := 300 kg
wheel := 40 kg
spring := 16 kN/m
damper := 1.2 kN*s/m
tyre := 180 kN/m

A := [0/s, 1, 0/s, 0;
      -spring/body, -damper/body, spring/body, damper/body;
      0/s, 0, 0/s, 1;
      spring/wheel, damper/wheel, -(spring + tyre)/wheel, -damper/wheel]
B := [0/s; 0/s^2; 0/s; tyre/wheel]
body_height := [1, 0 s, 0, 0 s]

# p * I - A, for a complex frequency p.
shifted(p) := [p, -1, 0/s, 0;
               spring/body, p + damper/body, -spring/body, -damper/body;
               0/s, 0, p, -1;
               -spring/wheel, -damper/wheel, (spring + tyre)/wheel, p + damper/wheel]
states(f) := inv(shifted(2i * pi * f)) * B
transfer(f) := body_height * states(f)

"States for a road that waves by 1 at 1.5 Hz"
states(1.5 Hz)
"Body height over road height, at 1.5 Hz and at 10 Hz"
[transfer(1.5 Hz); transfer(10 Hz)]
"At rest the body follows the road"
transfer(0 Hz)
"Characteristic polynomial at p = -2 + 6i per second"
det(shifted((-2 + 6i) / s))

"The road reaches every state: the determinant of B, A*B, A^2*B, A^3*B"
reached := augment(B, A * B, A^2 * B, A^3 * B)
det(reached)
