# identity(n): the n by n identity matrix.

identity(1)
#= [1]
identity(3)
#= [1, 0, 0; 0, 1, 0; 0, 0, 1]
identity(2 m)
#= [1, 0; 0, 1]
rows(identity(4096))
#= 4096
identity(4097)
#! "matrix too big" 1
identity(1e10)
#! "matrix too big" 1
identity(0)
#! "must be positive integer" 1
identity(-1)
#! "must be positive integer" 1
identity(1.5)
#! "must be positive integer" 1
identity(1i)
#! "must be positive integer" 1
identity([2])
#! "must be positive integer" 1
identity("a")
#! "must be positive integer" 1
