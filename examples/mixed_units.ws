# A stepped shaft, held at the left end, as two beam elements. The unknowns are a deflection and a rotation at each of
# two nodes: lengths and angles, so the rows and columns of the stiffness matrix have units of their own.

E := 210 GPa
inertia(d) := pi * d^4 / 64
EI1 := E * inertia(60 mm)
EI2 := E * inertia(40 mm)
a := 0.8 m
b := 0.6 m

# Deflection and rotation at the step, then at the free end.
K := [12 * EI1 / a^3 + 12 * EI2 / b^3, 6 * EI2 / b^2 - 6 * EI1 / a^2, -12 * EI2 / b^3, 6 * EI2 / b^2;
      6 * EI2 / b^2 - 6 * EI1 / a^2, 4 * EI1 / a + 4 * EI2 / b, -6 * EI2 / b^2, 2 * EI2 / b;
      -12 * EI2 / b^3, -6 * EI2 / b^2, 12 * EI2 / b^3, -6 * EI2 / b^2;
      6 * EI2 / b^2, 2 * EI2 / b, -6 * EI2 / b^2, 4 * EI2 / b]

# A force on the step, a force and a moment at the free end.
load := [-900 N; 0 N*m; -400 N; 50 N*m]

u := lsolve(K, load)

"Deflection and rotation at the step and at the free end"
u
"Deflection at the free end"
u[2] -> mm
"Rotation at the free end"
u[3] -> deg

"Force and moment at the support"
fixed := [-12 * EI1 / a^3, 6 * EI1 / a^2; -6 * EI1 / a^2, 2 * EI1 / a]
fixed * [u[0]; u[1]]
