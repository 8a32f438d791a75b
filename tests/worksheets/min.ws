# min(a, ...): the smallest of numbers and matrices, or of texts.

min(3, [1; 5], -2)
#= -2
min([4, 2; 3, 7])
#= 2
min(5)
#= 5
min(7, [8, 9])
#= 7
min([3, -inf])
#= -inf

# One unit for all.
min(3 m, [1; 5] * m)
#= 1 m
min(1 m, 1 ft)
#= 1 ft
min([2 m, 1 ft; 3 m, 4 m])
#= 1 ft

# Real and imaginary parts, each by itself.
min(1 + 2i, 3 - 1i)
#= 1 - 1i
min([1 + 5i; 2 + 3i], 4)
#= 1 + 3i
# A real number takes no part in the imaginary ones, every element of a complex matrix does.
min(1 + 2i, 0)
#= 0 + 2i
min(1 + 2i, complex([0]))
#= 0
min(1 + 2i, [0])
#= 0 + 2i
min([1 + 2i, 3])
#= 1
min(complex([1, 2]))
#= 1
min([1 m + 2i*m; 3 m - 1i*m])
#= 1 m - 1i*m

# A NaN in the first place of an array starts the search at 0; elsewhere it never wins.
min([NaN; 5; 7])
#= 0
min([NaN; -5; 7])
#= -5
min([5; NaN; 7])
#= 5
min([NaN])
#= 0
min(9, [NaN; 5])
#= 0
min([NaN, 3 + 1i])
#= 0
min(complex([1; 2], [NaN; 4]))
#= 1
min(complex([1; 2], [4; NaN]))
#= 1 + 4i
# A NaN that stands by itself counts as 0.
min(NaN, 5)
#= 0
min(NaN, -5)
#= -5
min(complex(1, NaN), 2 + 3i)
#= 1
# Nothing beyond the largest finite number takes part.
min(inf)
#= 1.7976931348623157e308
min([inf; inf])
#= 1.7976931348623157e308
min(inf, 3)
#= 3

# Equal zeros: the first stays.
min(0, -0.0)
#= 0
min(-0.0, 0)
#= -0.0
min([1; -0.0; 0])
#= -0.0
min([1; 0; -0.0])
#= 0
min([NaN; -0.0])
#= 0
min([0; 1], [-0.0; 1])
#= 0

# Texts.
min("pear", ["apple"; "fig"])
#= "apple"
min("b", "a", "c")
#= "a"
min("a")
#= "a"
min(["pear", "fig"; "kiwi", "lime"])
#= "fig"
min("B", "a")
#= "a"
min("A", "a")
#= "a"
# Of equal texts the first wins: one accented letter, and a letter with its accent behind it.
min("é", "é")
#= "é"
min("é", "é")
#= "é"

# Blocks of larger matrices.
B := [-9, 5, "z"; 4, 3, "b"; -9, 6, "c"]
min(submatrix(B, 0, 2, 1, 1))
#= 3
min(submatrix(B, 0, 1, 1, 1))
#= 3
min(submatrix(B, 1, 2, 2, 2))
#= "b"

min([1 m; 2 s])
#! "vector must have uniform dimension or all strings" 1
min(1 m, [1 m; 2 s])
#! "vector must have uniform dimension or all strings" 2
min(["a"; 1])
#! "vector must have uniform dimension or all strings" 1
min(1 m, 1 s, [1 m; 2 s])
#! "unit mismatch" 2
min(1 m, 2 m, 1 s)
#! "unit mismatch" 3
min(0, 1 m)
#! "unit mismatch" 2
min([1; 2] * m, 3 s)
#! "unit mismatch" 2
min("a", 1)
#! "cannot mix scalar and string for this function" -1
min(1, "a")
#! "cannot mix scalar and string for this function" -1
min([1; 2], ["a"; "b"])
#! "cannot mix scalar and string for this function" -1
min(1 m, "a", 1 s)
#! "cannot mix scalar and string for this function" -1
min(sin)
#! "cannot mix scalar and string for this function" -1
min(1, sin)
#! "cannot mix scalar and string for this function" -1
min([[1, 2], [3]])
#! "may not be nested" 0
min("a", ["b", [3]])
#! "may not be nested" 1
min([])
#! "invalid dimension" 1
min(1, [])
#! "invalid dimension" 2
min("a", [])
#! "cannot mix scalar and string for this function" -1
min(1 m, [])
#! "unit mismatch" 2
min()
#! "wrong number of arguments" -1
