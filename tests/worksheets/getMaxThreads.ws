# getMaxThreads(): how many threads LAPACK was last told to work on.

getMaxThreads() >= 1
#= 1
previous := getMaxThreads()
setNumThreads(3) == previous
#= 1
getMaxThreads()
#= 3
setNumThreads(previous)
#= 3
getMaxThreads() == previous
#= 1
