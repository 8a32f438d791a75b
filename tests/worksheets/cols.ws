# cols(M): the number of columns; 0 for anything but a matrix.
cols([1, 2, 3; 4, 5, 6])
#= 3
cols([1; 2; 3] * m)
#= 1
cols([])
#= 0
cols(["a"; [1, 2]])
#= 1
cols([1 m, 2 s])
#= 2
cols(5)
#= 0
cols(5 m)
#= 0
cols("text")
#= 0
cols(sin)
#= 0
cols([1i, 2; 3, 4])
#= 2
cols()
#! "wrong number of arguments" -1
cols([1], [2])
#! "wrong number of arguments" -1
