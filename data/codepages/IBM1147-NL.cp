# IBM1147-NL: IBM1147 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1147

id = 58491
name = IBM1147-NL
based on = IBM1147
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
