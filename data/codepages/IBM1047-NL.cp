# IBM1047-NL: IBM1047 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1047

id = 58391
name = IBM1047-NL
based on = IBM1047
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
