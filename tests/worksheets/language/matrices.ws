# Matrix literals.
[1, 2; 3, 4]
#{"kind":"matrix","rows":2,"cols":2,"complex":false,"unit":"","data":[[1.0,2.0],[3.0,4.0]]}
[5]
#{"kind":"matrix","rows":1,"cols":1,"complex":false,"unit":"","data":[[5.0]]}
[1; 2]
#{"kind":"matrix","rows":2,"cols":1,"complex":false,"unit":"","data":[[1.0],[2.0]]}
[]
#{"kind":"matrix","rows":0,"cols":0,"complex":false,"unit":"","data":[]}
[1 + 1, -2, 3 - 1]
#= [2, -2, 2]
# Elements are numbers, texts or matrices: these are nested, not joined.
[1, "abc"; [1, 2], 2i]
#{"kind":"matrix","rows":2,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],{"text":"abc"}],[{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[1.0,2.0]]},[0.0,2.0]]]}
[[1, 2], [3, 4]]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[1.0,2.0]]},{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[3.0,4.0]]}]]}
[[[]]]
#{"kind":"matrix","rows":1,"cols":1,"complex":false,"unit":"","data":[[{"kind":"matrix","rows":1,"cols":1,"complex":false,"unit":"","data":[[{"kind":"matrix","rows":0,"cols":0,"complex":false,"unit":"","data":[]}]]}]]}
cols([1 -2])
#= 1

# One unit: the matrix has it. Otherwise each number its own.
[1 m, 1 ft]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"m","data":[[1.0,0.3048]]}
[1 m, 2 s]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"units":[["m","s"]],"data":[[1.0,2.0]]}
# A plain 0 has no unit.
[1 m, 0]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"units":[["m",""]],"data":[[1.0,0.0]]}
# Texts and nested arrays do not count.
[1 m, "x", [2 s]]
#{"kind":"matrix","rows":1,"cols":3,"complex":false,"unit":"m","data":[[1.0,{"text":"x"},{"kind":"matrix","rows":1,"cols":1,"complex":false,"unit":"s","data":[[2.0]]}]]}
[1 m, "x", 2 s]
#{"kind":"matrix","rows":1,"cols":3,"complex":false,"units":[["m","","s"]],"data":[[1.0,{"text":"x"},2.0]]}
[[1 m]; [2i]]
#{"kind":"matrix","rows":2,"cols":1,"complex":false,"unit":"","data":[[{"kind":"matrix","rows":1,"cols":1,"complex":false,"unit":"m","data":[[1.0]]}],[{"kind":"matrix","rows":1,"cols":1,"complex":true,"unit":"","data":[[[0.0,2.0]]]}]]}
# Uniform however it was made.
[1 m, 2 s; 3 m, 4 s][0, 0] * [1, 2]
#= [1 m, 2 m]

# An imaginary array exactly when some imaginary part is not zero.
[1, 2 + 0i]
#{"kind":"matrix","rows":1,"cols":2,"complex":false,"unit":"","data":[[1.0,2.0]]}
[1, 2i]
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],[0.0,2.0]]]}
complex([1, 2])
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],[2.0,0.0]]]}
# Transposes and elements: the one keeps the array, the other is a number.
complex([1, 2])'
#{"kind":"matrix","rows":2,"cols":1,"complex":true,"unit":"","data":[[[1.0,0.0]],[[2.0,0.0]]]}

[sin, 2]
#! "must be string scalar or array" -1 "" column 1
1 + [1, 2, cos]
#! "must be string scalar or array" -1 "" column 5
[1, 2; 3]
#! syntax error column 8
[1, 2;]
#! syntax error column 7
[1, , 2]
#! syntax error column 5
[, 1]
#! syntax error column 2
[;]
#! syntax error column 2
[1 2]
#! syntax error column 4
