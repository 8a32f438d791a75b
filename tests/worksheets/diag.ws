# diag(x): a column becomes a diagonal matrix, of another square matrix the diagonal is taken.

diag([1; 2; 3])
#= [1, 0, 0; 0, 2, 0; 0, 0, 3]
diag([5])
#= [5]
diag([1; 2] * m)
#= [1 m, 0 m; 0 m, 2 m]
diag([1 m; 2 s])
#= [1 m, 0; 0, 2 s]
diag(["a"; 2 m])
#= ["a", 0; 0, 2 m]
diag([[1, 2]; [3]])
#= [[1, 2], 0; 0, [3]]
diag([1i; 2])
#= [1i, 0; 0, 2]
diag(complex([1; 2]))
#= complex([1, 0; 0, 2])
B := [9, 9; 9, 1; 9, 2]
diag(submatrix(B, 1, 2, 1, 1))
#= [1, 0; 0, 2]

diag([1, 2; 3, 4])
#= [1; 4]
diag([1 m, 2; 3, 4 s])
#= [1 m; 4 s]
diag(["a", 2; 3, [4]])
#= ["a"; [4]]
diag(complex([1, 2; 3, 4]))
#= [1; 4]
diag([1i, 2; 3, 4])
#= [1i; 4]
diag([])
#= []

diag([1, 2])
#! "must be square" 1
diag([1, 2; 3, 4; 5, 6])
#! "must be square" 1
diag(5)
#! "must be a vector or a matrix" 1
diag("a")
#! "must be a vector or a matrix" 1
diag(sin)
#! "must be a vector or a matrix" 1
