# A cut list in feet, inches and fractions: every piece comes from boards of 16 feet, and every cut takes 1/8 of an inch.

file := read_csv("cuts.csv")
cuts := submatrix(file, 1, rows(file) - 1, 0, 2)
n := rows(cuts)
board := FIF("16'")
kerf := FIF("1/8\"")

# Texts become lengths, and lengths texts again.
length_of(k, j) := FIF(cuts[k, 2])
lengths := matrix(n, 1, length_of)
counts := submatrix(cuts, 0, n - 1, 1, 1)
"All pieces end to end"
FIF_inverse(counts * lengths)

# Boards when each kind of piece is cut from boards of its own. The last piece of a board needs no cut behind it.
per_board(k) := floor((board + kerf) / (lengths[k] + kerf))
left_over(k) := max(board - per_board(k) * (lengths[k] + kerf), 0 m)
plan(k, j) := if(j == 0, per_board(k), if(j == 1, ceil(counts[k] / per_board(k)), FIF_inverse(left_over(k))))
plans := matrix(n, 3, plan)
"Piece, count, length, pieces from a board, boards, what is left of a full one; the longest piece first"
by_length := reverse(csort(augment(lengths, cuts, plans), 0))
submatrix(by_length, 0, n - 1, 1, 6)
"Boards"
boards(k, j) := plans[k, 1]
sigmasum(matrix(n, 1, boards))

"What is left of a rafter's board, and the pieces that it still gives"
names := submatrix(cuts, 0, n - 1, 0, 0)
rest := left_over(match("rafter", names)[0])
FIF_inverse(rest)
set tol 0
lookup(rest, lengths, names, "leq")
