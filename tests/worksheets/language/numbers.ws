# Number literals.
12
#{"kind":"number","re":12.0,"im":0.0,"unit":""}
1.5
#{"kind":"number","re":1.5,"im":0.0,"unit":""}
.5
#{"kind":"number","re":0.5,"im":0.0,"unit":""}
5.
#{"kind":"number","re":5.0,"im":0.0,"unit":""}
1.5e-3
#{"kind":"number","re":0.0015,"im":0.0,"unit":""}
1E3
#{"kind":"number","re":1000.0,"im":0.0,"unit":""}
1e+5
#= 100000
5.e2
#= 500
007
#= 7
# Correctly rounded.
0.1
#{"kind":"number","re":0.1,"im":0.0,"unit":""}
9007199254740993
#= 9007199254740992
123456789012345678901234567890
#{"kind":"number","re":1.2345678901234568e+29,"im":0.0,"unit":""}
2.2250738585072011e-308
#{"kind":"number","re":2.225073858507201e-308,"im":0.0,"unit":""}
# Too large is inf, denormals are read, too small is 0.
1e400
#{"kind":"number","re":"inf","im":0.0,"unit":""}
1e99999999999999999999
#= inf
5e-324
#{"kind":"number","re":5e-324,"im":0.0,"unit":""}
1e-310
#{"kind":"number","re":1e-310,"im":0.0,"unit":""}
1e-400
#{"kind":"number","re":0.0,"im":0.0,"unit":""}
-1e-400
#{"kind":"number","re":-0.0,"im":0.0,"unit":""}
1.7976931348623157e308
#{"kind":"number","re":1.7976931348623157e+308,"im":0.0,"unit":""}

# An exponent needs its digits: else e is a name.
e := 100
2e
#= 200
2e + 1
#= 201
x3 := 7
0x3
#= 0
1.5.2
#! syntax error column 4
1 .5
#! syntax error column 3
.
#! syntax error column 1
1..2
#! syntax error column 3

# Imaginary numbers: i directly behind, no name character after it.
2i
#{"kind":"number","re":0.0,"im":2.0,"unit":""}
1.5e3i
#{"kind":"number","re":0.0,"im":1500.0,"unit":""}
2i * 3i
#= -6
2i + 1
#= 1 + 2i
1e400i
#{"kind":"number","re":0.0,"im":"inf","unit":""}
2in
#= 2 * in
i2 := 5
3i2
#= 15
2 i
#! "undefined name: i" -1 "" column 3
2i'
#! "must be matrix" 1 "" column 3

pi
#{"kind":"number","re":3.141592653589793,"im":0.0,"unit":""}
inf
#{"kind":"number","re":"inf","im":0.0,"unit":""}
-inf
#{"kind":"number","re":"-inf","im":0.0,"unit":""}
NaN
#{"kind":"number","re":"nan","im":0.0,"unit":""}
nan
#! "undefined name: nan" -1
