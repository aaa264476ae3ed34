# IBM277-NL: IBM277 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM277

id = 57621
name = IBM277-NL
based on = IBM277
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
