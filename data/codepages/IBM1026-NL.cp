# IBM1026-NL: IBM1026 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1026

id = 58370
name = IBM1026-NL
based on = IBM1026
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
