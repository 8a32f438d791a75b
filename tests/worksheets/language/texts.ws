# Texts and their escapes.
"abc"
#{"kind":"text","text":"abc"}
""
#{"kind":"text","text":""}
"say \"hi\" \\ \n\t."
#{"kind":"text","text":"say \"hi\" \\ \n\t."}
"größe 長さ # no comment"
#{"kind":"text","text":"größe 長さ # no comment"}
"	tab"
#{"kind":"text","text":"\ttab"}

"never closed
#! syntax error column 1
"ends with a backslash \
#! syntax error column 1
"what is \x"
#! syntax error column 10
"two" "texts"
#! syntax error column 7
# A text that is not closed ends its statement with its line, inside brackets too.
[1, "never closed]
#! syntax error
2 + 3
#= 5
"abc"(1)
#! syntax error column 6
"abc"[0]
#! "must be matrix" -1 "" column 6
"abc"'
#! "must be matrix" 1 "" column 6
