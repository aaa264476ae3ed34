# IBM1025-NL: IBM1025 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1025

id = 58369
name = IBM1025-NL
based on = IBM1025
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
