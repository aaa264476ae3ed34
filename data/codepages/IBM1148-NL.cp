# IBM1148-NL: IBM1148 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1148

id = 58492
name = IBM1148-NL
based on = IBM1148
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
