# HMS(hours[, minutes[, seconds]]): a time from a text of hours, minutes and seconds, or from numbers.

HMS("1:01:01.25")
#= 3661.25 s
HMS("12:05:30")
#= 43530 s
HMS("0:0:0")
#= 0 s
HMS("100:00:00")
#= 360000 s
HMS(" \t12:05:30\n")
#= 43530 s
# A sign leads and holds for all of it.
HMS("-1:01:01.25")
#= -3661.25 s
HMS("+1:01:01.25")
#= 3661.25 s
HMS("-0:0:0")
#= -0.0 * s
# Two digits are the most that minutes have, and up to 99; seconds are not bounded.
HMS("0:99:00")
#= 5940 s
HMS("0:00:100")
#= 100 s
HMS("1:1:1")
#= 3661 s
HMS("1:123:00")
#! "bad_hhmmss_string" 1

HMS("12:05")
#! "bad_hhmmss_string" 1
HMS("")
#! "bad_hhmmss_string" 1
HMS("1:02:03 pm")
#! "bad_hhmmss_string" 1
HMS("1:02:03.")
#! "bad_hhmmss_string" 1
HMS("1:02:.5")
#! "bad_hhmmss_string" 1
HMS("1:02:03,5")
#! "bad_hhmmss_string" 1
HMS("1: 02:03")
#! "bad_hhmmss_string" 1
HMS("- 1:02:03")
#! "bad_hhmmss_string" 1
HMS("1.5:02:03")
#! "bad_hhmmss_string" 1
HMS("1:02:03e2")
#! "bad_hhmmss_string" 1
HMS("at 1:02:03")
#! "bad_hhmmss_string" 1
HMS("1:02:03:04")
#! "bad_hhmmss_string" 1
HMS("١:02:03")
#! "bad_hhmmss_string" 1

HMS(1, 1, 1.25)
#= 3661.25 s
HMS(1, 1)
#= 3660 s
HMS(1.5)
#= 5400 s
HMS(-1, 30)
#= -1800 s
HMS(0, 0, inf)
#= inf * s
HMS(NaN)
#= NaN * s

HMS(1 hr)
#! "must be real" 1
HMS(1, 1i)
#! "must be real" 2
HMS(1, 1, 1 s)
#! "must be real" 3
HMS("1:02:03", 4)
#! "must be real" 1
HMS(1, "02")
#! "must be real" 2
HMS(1, 2, "03")
#! "must be real" 3
HMS(["1:02:03"])
#! "must be real" 1
HMS([1; 2; 3])
#! "must be real" 1
HMS(sin)
#! "must be real" 1
HMS()
#! "wrong number of arguments" -1
HMS(1, 2, 3, 4)
#! "wrong number of arguments" -1
