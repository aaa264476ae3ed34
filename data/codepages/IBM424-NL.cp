# IBM424-NL: IBM424 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM424

id = 57768
name = IBM424-NL
based on = IBM424
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
