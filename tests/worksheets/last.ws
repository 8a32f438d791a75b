# last(v): the index of a column's last element, counted from the worksheet's origin.
v := [3; 1; 4; 1; 5]
last(v)
#= 4
v[last(v)]
#= 5
last(v * m)
#= 4
last(["a"; 2])
#= 1
set origin 1
last(v)
#= 5
v[last(v)]
#= 5
set origin -10
last(v)
#= -6
set origin 2147483647
last(v)
#= 2147483651
set origin 0
# The column is the first argument that a user writes.
last([1, 2, 3])
#! "must be vector" 1
last(3)
#! "must be vector" 1
last("abc")
#! "must be vector" 1
last([])
#! "must be vector" 1
