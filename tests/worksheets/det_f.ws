# det_f(M): the determinant of a square matrix and of nothing else.

det_f([1, 2; 3, 4])
#= -2
det_f([-3])
#= -3
det_f([2i])
#= 2i
det_f([])
#= 1
det_f([1, 2; 3, 4] * m)
#= -2 m^2
det_f([3; 4])
#! "must be square" 1
det_f([1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
det_f(3)
#! "must be matrix" 1
det_f("a")
#! "must be matrix" 1
