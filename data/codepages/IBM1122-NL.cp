# IBM1122-NL: IBM1122 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1122

id = 58466
name = IBM1122-NL
based on = IBM1122
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
