# submatrix(M, ir, jr, ic, jc): rows ir to jr, columns ic to jc.

M := [1, 2, 3; 4, 5, 6; 7, 8, 9]
submatrix(M, 0, 1, 1, 2)
#= [2, 3; 5, 6]
submatrix(M, 1, 1, 1, 1)
#= [5]
submatrix(M, 0, 2, 0, 2)
#= [1, 2, 3; 4, 5, 6; 7, 8, 9]
# Counted from the origin.
set origin 1
submatrix(M, 1, 2, 2, 3)
#= [2, 3; 5, 6]
submatrix(M, 0, 1, 1, 1)
#! "invalid dimension" 2
set origin -3
submatrix(M, -3, -3, -2, -1)
#= [2, 3]
set origin 0

# A pair in falling order flips the block in that direction.
submatrix(M, 2, 0, 0, 1)
#= [7, 8; 4, 5; 1, 2]
submatrix(M, 0, 1, 2, 1)
#= [3, 2; 6, 5]
submatrix(M, 2, 0, 2, 0)
#= [9, 8, 7; 6, 5, 4; 3, 2, 1]

# A block of a block.
submatrix(submatrix(M, 1, 2, 0, 2), 0, 1, 1, 2)
#= [5, 6; 8, 9]
submatrix(submatrix(M, 1, 2, 0, 2), 1, 0, 1, 1)
#= [8; 5]

# Units, texts and nested arrays go with their elements; one unit stays one.
submatrix([1 m, 2 s; 3 m, 4 s], 0, 1, 1, 1)
#= [2 s; 4 s]
submatrix([1 m, 2 s; 3 kg, 4], 1, 0, 0, 1)
#= [3 kg, 4; 1 m, 2 s]
submatrix(["a", 1; 2, [3, 4]], 0, 1, 1, 1)
#= [1; [3, 4]]
submatrix(["a", 1; 2, [3, 4]], 1, 0, 1, 0)
#= [[3, 4], 2; 1, "a"]
submatrix(["a", 1; 2, [3, 4]], 0, 0, 1, 1) + 1
#= [2]

# A block keeps the imaginary array of its matrix, a flipped one needs an imaginary part that is not zero.
C := [1, 2i; 3, 4]
submatrix(C, 0, 1, 0, 0)
#= complex([1; 3])
submatrix(C, 1, 0, 0, 0)
#= [3; 1]
submatrix(C, 1, 0, 0, 1)
#= [3, 4; 1, 2i]
# The unit of an index is not looked at.
submatrix(M, 0 m, 1 s, 0, 0)
#= [1; 4]

submatrix(M, -1, 0, 0, 0)
#! "invalid dimension" 2
submatrix(M, 3, 0, 0, 0)
#! "invalid dimension" 2
submatrix(M, 0, 3, 0, 0)
#! "invalid dimension" 3
submatrix(M, 0, 0, 3, 0)
#! "invalid dimension" 4
submatrix(M, 0, 0, 0, 3)
#! "invalid dimension" 5
submatrix(M, 0, 9, 9, 9)
#! "invalid dimension" 3
submatrix([], 0, 0, 0, 0)
#! "invalid dimension" 2
submatrix(M, 1e300, 0, 0, 0)
#! "invalid dimension" 2
submatrix(M, 0, -1e10, 0, 0)
#! "invalid dimension" 3
submatrix(M, 0, 0, 4294967296, 0)
#! "invalid dimension" 4
submatrix(M, 0, 0, 0, 4294967297)
#! "invalid dimension" 5

submatrix(M, 0.5, 0, 0, 0)
#! "must be integer" 2
submatrix(M, 0, "a", 0, 0)
#! "must be integer" 3
submatrix(M, 0, 0, [0], 0)
#! "must be integer" 4
submatrix(M, 0, 0, 0, 1i)
#! "must be integer" 5
submatrix(M, inf, 0, 0, 0)
#! "must be integer" 2
# Every bound is a number before any is looked for in the matrix.
submatrix(M, 9, 0, 0, 0.5)
#! "must be integer" 5
submatrix(5, 0, 0, 0, 0)
#! "must be matrix" 1
submatrix("a", 0.5, 0, 0, 0)
#! "must be matrix" 1
