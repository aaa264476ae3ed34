# IBM875-NL: IBM875 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM875

id = 58219
name = IBM875-NL
based on = IBM875
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
