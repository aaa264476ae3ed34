# IBM500-NL: IBM500 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM500

id = 57844
name = IBM500-NL
based on = IBM500
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
