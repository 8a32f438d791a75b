# length(v): the number of elements of a column.
length([3; 1; 2])
#= 3
length([3; 1] * m)
#= 2
length([7])
#= 1
length(["a"; [1, 2]; 3])
#= 3
length([1 m; 2 s])
#= 2
length([1i; 2])
#= 2
# A row is no column.
length([1, 2, 3])
#! "must be vector" 1
length([1, 2; 3, 4])
#! "must be vector" 1
length([])
#! "must be vector" 1
length(3)
#! "must be vector" 1
length("abc")
#! "must be vector" 1
length(sin)
#! "must be vector" 1
