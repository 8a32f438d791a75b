# rows(M): the number of rows; 0 for anything but a matrix.
rows([1, 2, 3; 4, 5, 6])
#= 2
rows([1; 2; 3] * m)
#= 3
rows([])
#= 0
rows(["a"; [1, 2]])
#= 2
rows([1 m, 2 s])
#= 1
rows(5)
#= 0
rows(5 m)
#= 0
rows("text")
#= 0
rows(sin)
#= 0
rows([1i, 2; 3, 4])
#= 2
rows()
#! "wrong number of arguments" -1
rows([1], [2])
#! "wrong number of arguments" -1
