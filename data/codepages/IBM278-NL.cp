# IBM278-NL: IBM278 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM278

id = 57622
name = IBM278-NL
based on = IBM278
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
