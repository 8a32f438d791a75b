# sigmasum(v): the sum of one column's elements or one row's.

sigmasum([1; 2; 3])
#= 6
sigmasum([1, 2, 3])
#= 6
sigmasum([5])
#= 5
sigmasum([1 m; 2 ft])
#= 1.6096 m
sigmasum([1i; 2])
#= 2 + 1i
B := [1, 2, 3; 4, 5, 6]
sigmasum(submatrix(B, 1, 1, 0, 2))
#= 15
sigmasum(submatrix(B, 0, 1, 1, 1))
#= 7
sigmasum([1e308; 1e308])
#! "floating point exception" 0
sigmasum([1, 2; 3, 4])
#! "must be vector" 1
sigmasum([])
#! "must be vector" 1
sigmasum([1 m; 2])
#! "must be scalar matrix" 1
sigmasum(["a"; 2])
#! "must be scalar matrix" 1
sigmasum(3)
#! "must be scalar matrix" 1
