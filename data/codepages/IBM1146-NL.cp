# IBM1146-NL: IBM1146 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1146

id = 58490
name = IBM1146-NL
based on = IBM1146
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
