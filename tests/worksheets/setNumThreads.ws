# setNumThreads(n): lets LAPACK work on n threads from now on; gives the number until now.

previous := getMaxThreads()
setNumThreads(2) == previous
#= 1
setNumThreads(4)
#= 2

# A number without imaginary part, whole in SI; its unit does not matter.
setNumThreads(3 m)
#= 4
setNumThreads(2 km)
#= 3

# The largest count fits 32 bits.
setNumThreads(2147483647)
#= 2000
setNumThreads(2147483648)
#! "must be positive integer" 1
setNumThreads(1e10)
#! "must be positive integer" 1

setNumThreads()
#! "must be positive integer" 1
setNumThreads(0)
#! "must be positive integer" 1
setNumThreads(-1)
#! "must be positive integer" 1
setNumThreads(1.5)
#! "must be positive integer" 1
setNumThreads(2 + 1i)
#! "must be positive integer" 1
setNumThreads(inf)
#! "must be positive integer" 1
setNumThreads(NaN)
#! "must be positive integer" 1
setNumThreads("2")
#! "must be positive integer" 1
setNumThreads([2])
#! "must be positive integer" 1

# What is refused changes nothing.
setNumThreads(previous)
#= 2147483647
getMaxThreads() == previous
#= 1
