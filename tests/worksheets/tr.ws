# tr(M): the trace.

tr([1, 2; 3, 4])
#= 5
tr([1 + 2i, 0; 0, 3])
#= 4 + 2i
tr([1, 2; 3, 4] * m)
#= 5 m
tr([7])
#= 7
tr([])
#= 0
tr([-0.0])
#= 0
B := [9, 9, 9; 9, 1, 2; 9, 3, 4]
tr(submatrix(B, 1, 2, 1, 2))
#= 5
tr([NaN, 0; 0, 1])
#= NaN
tr([1e308, 0; 0, 1e308])
#! "floating point exception" 0
tr([1, 2, 3; 4, 5, 6])
#! "must be square" 1
tr([1 m, 0; 0, 1 m])
#! "must be scalar matrix" 1
tr(5)
#! "must be scalar matrix" 1
tr("a")
#! "must be scalar matrix" 1
