# IBM1112-NL: IBM1112 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1112

id = 58456
name = IBM1112-NL
based on = IBM1112
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
