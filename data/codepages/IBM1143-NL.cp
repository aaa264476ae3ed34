# IBM1143-NL: IBM1143 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1143

id = 58487
name = IBM1143-NL
based on = IBM1143
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
