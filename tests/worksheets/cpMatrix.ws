# cpMatrix(M): a copy, with everything that belongs to it.
cpMatrix([1, 2; 3, 4])
#= [1, 2; 3, 4]
cpMatrix([1, 2; 3, 4] * m)
#= [1, 2; 3, 4] * m
cpMatrix([1 m, 2 s])
#= [1 m, 2 s]
cpMatrix(["a", [1; 2], 3])
#= ["a", [1; 2], 3]
cpMatrix(complex([1, 2]))
#= complex([1, 2])
cpMatrix([])
#= []
cpMatrix(submatrix(["a", 1 m, 2; "b", 3 s, [4]], 0, 1, 1, 2))
#= [1 m, 2; 3 s, [4]]
cpMatrix(5)
#! "must be matrix" 1
cpMatrix("text")
#! "must be matrix" 1
cpMatrix(cos)
#! "must be matrix" 1
