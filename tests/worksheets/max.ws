# max(a, ...): the largest of numbers and matrices, or of texts.

max(3, [1; 5], -2)
#= 5
max([4, 2; 3, 7])
#= 7
max(5)
#= 5
max(7, [1, 2])
#= 7
max([3, inf])
#= inf

# One unit for all.
max(3 m, [1; 5] * m)
#= 5 m
max(1 m, 1 ft)
#= 1 m

# Real and imaginary parts, each by itself.
max(1 + 2i, 3 - 1i)
#= 3 + 2i
max([1 + 5i; 2 + 3i], 4)
#= 4 + 5i
max(-1 - 2i, 0)
#= 0 - 2i
max(-1 - 2i, complex([0]))
#= 0
max([-1 - 2i, 3])
#= 3

# A NaN in the first place of an array starts the search at 0; elsewhere it never wins.
max([NaN; -5; -7])
#= 0
max([NaN; 5; -7])
#= 5
max([-5; NaN; -7])
#= -5
max(NaN, -5)
#= 0
max(NaN, 5)
#= 5
max(complex([1; 2], [NaN; -4]))
#= 2
max(-inf)
#= -1.7976931348623157e308
max([-inf; -inf])
#= -1.7976931348623157e308
max(-inf, -3)
#= -3

# Equal zeros: the first stays.
max(-0.0, 0)
#= -0.0
max(0, -0.0)
#= 0
max([-1; -0.0; 0])
#= -0.0
max([-0.0; 0])
#= -0.0
max([NaN; -0.0])
#= 0

# Texts.
max("pear", ["apple"; "fig"])
#= "pear"
max(["pear", "fig"; "kiwi", "lime"])
#= "pear"
max("B", "a")
#= "B"
max("A", "a")
#= "A"
max("é", "é")
#= "é"

B := [9, 5, "z"; 4, 3, "b"; 9, 6, "c"]
max(submatrix(B, 0, 1, 1, 1))
#= 5
max(submatrix(B, 1, 2, 2, 2))
#= "c"

max([1 m; 2 s])
#! "vector must have uniform dimension or all strings" 1
max(1, ["a"; 1])
#! "vector must have uniform dimension or all strings" 2
max(1 m, 2 m, 1 s)
#! "unit mismatch" 3
max("a", 1)
#! "cannot mix scalar and string for this function" -1
max(sin)
#! "cannot mix scalar and string for this function" -1
max([[1, 2], [3]])
#! "may not be nested" 0
max("a", "b", ["b", [3]])
#! "may not be nested" 2
max([])
#! "invalid dimension" 1
max(1, 2, [])
#! "invalid dimension" 3
max()
#! "wrong number of arguments" -1
