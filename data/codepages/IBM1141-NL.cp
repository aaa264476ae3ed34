# IBM1141-NL: IBM1141 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1141

id = 58485
name = IBM1141-NL
based on = IBM1141
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
