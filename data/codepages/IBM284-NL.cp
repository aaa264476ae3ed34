# IBM284-NL: IBM284 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM284

id = 57628
name = IBM284-NL
based on = IBM284
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
