# A steel beam from a table of sections: one by its name, then the lightest that meets several conditions at once.

file := read_csv("sections.csv")
sections := submatrix(file, 1, rows(file) - 1, 0, cols(file) - 1)
h(i) := sections[i, 2] * mm
Iy(i) := sections[i, 6] * cm^4
Wy(i) := sections[i, 7] * cm^3

"IPE 300: depth, mass and moment of inertia"
vlookup("IPE 300", sections, 2)[0] * mm -> mm
vlookup("IPE 300", sections, 5)[0] * kg/m -> kg/m
vlookup("IPE 300", sections, 6)[0] * cm^4 -> cm^4

"All families there are, each where it stands for the first time"
families := submatrix(sections, 0, rows(sections) - 1, 1, 1)
row(i, j) := i
index := matrix(rows(sections), 1, row)
is_first(i, z) := match(families[i], families)[0] == i
lookup(0, index, families, is_first)

# A floor beam of 6.4 m under 14 kN/m in S 235: strong enough in bending, and it bends by span / 300 at most.
span := 6.4 m
q := 14 kN/m
E := 210 GPa
W_needed := q * span^2 / 8 / (235 MPa / 1.5)
I_needed := 5 * q * span^3 * 300 / (384 * E)
"Section modulus and moment of inertia that it needs"
W_needed -> cm^3
I_needed -> cm^4

# A row fits when all conditions hold: each is 1 or 0, so their product is.
fits(i, depth) := (Wy(i) >= W_needed) * (Iy(i) >= I_needed) * (h(i) <= depth)
picked(k, j) := sections[hits[k], j]

"Sections that carry the load and are no deeper than 310 mm, the lightest first"
hits := match(310 mm, index, fits)
candidates := csort(matrix(rows(hits), cols(sections), picked), 5)
candidates

"The lightest one that is no deeper than 240 mm"
hits := match(240 mm, index, fits)
shallow := csort(matrix(rows(hits), cols(sections), picked), 5)
submatrix(shallow, 0, 0, 0, cols(shallow) - 1)

"The deep one saves so much steel"
(shallow[0, 5] - candidates[0, 5]) * kg/m * span -> kg
"The deflection of both"
deflection(k, j) := 5 * q * span^4 / (384 * E * if(k == 0, candidates[0, 6], shallow[0, 6]) * cm^4)
matrix(2, 1, deflection) -> mm
