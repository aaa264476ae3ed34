# IBM420-NL: IBM420 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM420

id = 57764
name = IBM420-NL
based on = IBM420
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
