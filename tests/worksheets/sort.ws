# sort(v): a column in ascending order.

sort([3; 1; 2])
#= [1; 2; 3]
sort([1; 2; 3])
#= [1; 2; 3]
sort([5])
#= [5]
sort([-1; -inf; inf; 0; 1e-320])
#= [-inf; -1; 0; 1e-320; inf]
sort(sort([3; 1; 2]))
#= [1; 2; 3]

# Numbers of one unit, however it was written.
sort([2 m; 1 ft; 1 m])
#= [1 ft; 1 m; 2 m]
sort([3; 1] * kN)
#= [1 kN; 3 kN]
sort([0 m; -1 m])
#= [-1 m; 0 m]

# Equal keys stand in the order that the heap leaves, not in that of the input: worked out by hand.
sort(complex([1; 1], [10; 11]))
#= [1 + 10i; 1 + 11i]
sort(complex([1; 1; 1; 1], [10; 11; 12; 13]))
#= [1 + 11i; 1 + 13i; 1 + 10i; 1 + 12i]
# From a heap sort in Python, as are those of NaN below.
sort(complex([2; 1; 2; 1; 2; 1], [0; 1; 2; 3; 4; 5]))
#= [1 + 1i; 1 + 3i; 1 + 5i; 2 + 4i; 2; 2 + 2i]
# Zeros of both signs are equal.
sort([-0.0; 0])
#= [-0.0; 0]
sort([0; -0.0; 0; -0.0])
#= [-0.0; -0.0; 0; 0]
sort([0; 1; -0.0; -1])
#= [-1; 0; -0.0; 1]
# A NaN ends the comparisons that it takes part in.
sort([NaN; 1])
#= [1; NaN]
sort([1; NaN])
#= [NaN; 1]
sort([3; NaN; 1; 2])
#= [NaN; 1; 2; 3]
sort([NaN; 3; 1; 2])
#= [1; 2; 3; NaN]
sort([2; NaN; 1])
#= [NaN; 1; 2]

# Complex numbers are ordered by their real part; the imaginary array of the input stays.
sort([2 + 1i; 1 - 1i; 3])
#= [1 - 1i; 2 + 1i; 3]
sort(complex([2; 1]))
#= complex([1; 2])

# Texts in the order of the root collation: accents and case decide only where the letters do not.
sort(["pear"; "apple"; "fig"])
#= ["apple"; "fig"; "pear"]
sort(["b"; "B"; "a"; "A"])
#= ["a"; "A"; "b"; "B"]
sort(["cote"; "côté"; "coté"; "côte"])
#= ["cote"; "coté"; "côte"; "côté"]
sort(["Zug"; "Öl"; "Ofen"])
#= ["Ofen"; "Öl"; "Zug"]
sort(["10"; "9"; ""])
#= [""; "10"; "9"]
sort(["b"; "a"; "b"; "a"])
#= ["a"; "a"; "b"; "b"]
sort(["x"])
#= ["x"]

# Columns of larger matrices.
B := [9, 3, "c"; 8, 1, "a"; 7, 2, "b"]
sort(submatrix(B, 0, 2, 1, 1))
#= [1; 2; 3]
sort(submatrix(B, 1, 2, 2, 2))
#= ["a"; "b"]
B
#= [9, 3, "c"; 8, 1, "a"; 7, 2, "b"]

sort([1, 2, 3])
#! "must be vector" 1
sort([1, 2; 3, 4])
#! "must be vector" 1
sort([])
#! "must be vector" 1
sort(5)
#! "must be vector" 1
sort("a")
#! "must be vector" 1
sort(sin)
#! "must be vector" 1
sort([1 m; 2 s])
#! "vector must have uniform dimension or all strings" 1
sort([0; 1 m])
#! "vector must have uniform dimension or all strings" 1
sort([1; "a"])
#! "vector must have uniform dimension or all strings" 1
sort(["a"; 1])
#! "vector must have uniform dimension or all strings" 1
sort(["a"; [1, 2]])
#! "vector must have uniform dimension or all strings" 1
sort([[1, 2]; [3]])
#! "vector must have uniform dimension or all strings" 1
sort([[1, 2]; 3])
#! "vector must have uniform dimension or all strings" 1
sort([1; 2], 3)
#! "wrong number of arguments" -1
