# A bridge of 60 m: a plane truss of 24 nodes and 47 bars under its own weight, traffic and a push along the top.
# The stiffness matrix is K = B' * k * B: row b of B holds the direction of bar b at the degrees of freedom of its two
# nodes, k the stiffness E * A / L of each bar. Node i moves by u[2 * i] along x and by u[2 * i + 1] along y.

E := 210 GPa

# The tables, without their headings.
table(file) := submatrix(file, 1, rows(file) - 1, 0, cols(file) - 1)
nodes := table(read_csv("nodes.csv"))
bars := table(read_csv("bars.csv"))
dofs := 2 * rows(nodes)
bar_count := rows(bars)

# Bars: their two nodes, area, extent and length.
from(b) := bars[b, 0]
to(b) := bars[b, 1]
area(b) := bars[b, 2] * cm^2
extent(b, axis) := (nodes[to(b), axis] - nodes[from(b), axis]) * m
length_of(b, column) := sqrt(extent(b, 0)^2 + extent(b, 1)^2)
L := matrix(bar_count, 1, length_of)

# Degrees of freedom: node and axis, whether a support holds them, the load on those that are free.
node(d) := floor(d / 2)
axis(d) := mod(d, 2)
held(d) := nodes[node(d), 2 + axis(d)]
load(d, column) := if(held(d) == 0, nodes[node(d), 4 + axis(d)] * kN, 0 N)

direction(b, d) := (if(node(d) == to(b), 1, 0) - if(node(d) == from(b), 1, 0)) * extent(b, axis(d)) / L[b]
B := matrix(bar_count, dofs, direction)
stiffened(b, d) := E * area(b) / L[b] * B[b, d]
kB := matrix(bar_count, dofs, stiffened)
K := B' * kB

# A held degree of freedom gets an equation of its own, u = 0, in place of its balance of forces.
supported(i, j) := if(held(i) + held(j) == 0, K[i, j], if(i == j, 1 N/m, 0 N/m))
F := matrix(dofs, 1, load)
u := lsolve(matrix(dofs, dofs, supported), F)

"Movement of the deck, along x and y"
deck(i, axis) := u[2 * i + axis]
matrix(13, 2, deck) -> mm
"Movement of the top"
top(i, axis) := u[2 * (13 + i) + axis]
matrix(11, 2, top) -> mm

# Tension is positive.
force := kB * u
"Bars of the deck"
submatrix(force, 0, 11, 0, 0) -> kN
"Bars of the top"
submatrix(force, 12, 21, 0, 0) -> kN
"Posts"
submatrix(force, 22, 32, 0, 0) -> kN
"Diagonals, the two at the ends first, the two that cross in the middle last"
submatrix(force, 33, 46, 0, 0) -> kN

"What the supports carry: left along x, left along y, right along y"
reaction := K * u - F
[reaction[0]; reaction[1]; reaction[25]] -> kN
