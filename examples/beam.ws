# A continuous beam of four spans: clamped at a, on rollers at b and d, free at e; a hoist hangs at c.
#
#     a           b       c       d     e
#   //|===========o=======|=======o=====|
#       uniform load    hoist          sign
#
# Every node has a deflection and a rotation, upward and anticlockwise. So the stiffness matrix mixes N/m, N and N*m:
# forces and moments that deflections and rotations call for.

E := 210 GPa
EI1 := E * 3892 cm^4    # IPE 240, up to the roller at d
EI2 := E * 1943 cm^4    # IPE 200, the overhang

# The blocks of one span's stiffness: its left end, its right end, and what one end feels of the other.
left(EI, L) := EI / L^3 * [12, 6 * L; 6 * L, 4 * L^2]
right(EI, L) := EI / L^3 * [12, -6 * L; -6 * L, 4 * L^2]
across(EI, L) := EI / L^3 * [-12, 6 * L; -6 * L, 2 * L^2]
ab := 5 m
bc := 2.5 m
cd := 2.5 m
de := 1.5 m

"Stiffness of the overhang's end for a deflection and a rotation"
right(EI2, de)

# Neighbouring spans add up at the node that they share.
none := 0 * left(EI1, ab)
K := stack(
    augment(left(EI1, ab),    across(EI1, ab),                   none,                               none,                               none),
    augment(across(EI1, ab)', right(EI1, ab) + left(EI1, bc),    across(EI1, bc),                    none,                               none),
    augment(none,             across(EI1, bc)',                  right(EI1, bc) + left(EI1, cd),     across(EI1, cd),                    none),
    augment(none,             none,                              across(EI1, cd)',                   right(EI1, cd) + left(EI2, de),     across(EI2, de)),
    augment(none,             none,                              none,                               across(EI2, de)',                   right(EI2, de)))

# Loads at the nodes; a uniform load acts on the ends of its span with q*L/2 and with moments of q*L^2/12.
q := 6 kN/m
hoist := 18 kN
sign := 2.5 kN
f := [-q * ab / 2; -q * ab^2 / 12; -q * ab / 2; q * ab^2 / 12; -hoist; 0 N*m; 0 N; 0 N*m; -sign; 0 N*m]

# The supports hold the deflections of a, b and d and the rotation of a; the other rows and columns are solved for.
free := [3; 4; 5; 7; 8; 9]
held := [0; 1; 2; 6]
free_free(i, j) := K[free[i], free[j]]
held_free(i, j) := K[held[i], free[j]]
free_load(i, j) := f[free[i]]
held_load(i, j) := f[held[i]]
Kff := matrix(6, 6, free_free)
Ff := matrix(6, 1, free_load)

# Its inverse is the flexibility: m/N, 1/N and 1/(N*m), each in its place.
flexibility := inv(Kff)
"Deflection of the end e for a force there, its rotation for the force, its rotation for a moment"
flexibility[4, 4] -> mm/kN
flexibility[5, 4] -> deg/kN
flexibility[5, 5] -> deg/(kN*m)

u := flexibility * Ff
"Rotation at b, deflection and rotation at c, rotation at d, deflection and rotation at e"
u
"Deflection under the hoist and at the end"
[u[1]; u[4]] -> mm
"Rotations from b to e"
[u[0]; u[2]; u[3]; u[5]] -> deg

# The product of two columns is the sum of force times deflection and of moment times rotation: an energy. To it comes what
# the uniform load bends between the nodes.
"Energy of the movements of the nodes, from the stiffness and from the work of the loads; the energy of the whole beam"
u' * Kff * u / 2
Ff * u / 2
Ff * u / 2 + q^2 * ab^5 / (1440 * EI1)

reaction := matrix(4, 6, held_free) * u - matrix(4, 1, held_load)
"Reactions: force and moment at a, forces at b and d"
reaction
"The forces, and whether they carry the loads"
[reaction[0]; reaction[2]; reaction[3]] -> kN
reaction[0] + reaction[2] + reaction[3] -> kN
q * ab + hoist + sign -> kN

"The clamp's moment"
reaction[1] -> kN*m

# A spring under the end, three times as stiff as the beam is there.
spring := 3 / flexibility[4, 4]
at_the_end(i, j) := if(i == 4, if(j == 4, spring, 0 * Kff[i, j]), 0 * Kff[i, j])
propped := Kff + matrix(6, 6, at_the_end)
"How much stiffer the spring makes the whole: a ratio of determinants"
det(propped) / det(Kff)
"Deflections under the hoist and at the end with the spring"
moved := inv(propped) * Ff
[moved[1]; moved[4]] -> mm
