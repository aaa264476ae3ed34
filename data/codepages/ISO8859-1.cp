# ISO8859-1: Latin 1, Western European
# origin: converter ISO-8859-1 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-1 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 819
name = ISO8859-1
family = ascii
max bytes = 1
substitution = 3F
lf = 0A
cr = 0D
lineEnd3 = 0A
lineEnd4 = 0A

[decode]
00: 0000..000F
10: 0010..001F
20: 0020..002F
30: 0030..003F
40: 0040..004F
50: 0050..005F
60: 0060..006F
70: 0070..007F
80: 0080..008F
90: 0090..009F
A0: 00A0..00AF
B0: 00B0..00BF
C0: 00C0..00CF
D0: 00D0..00DF
E0: 00E0..00EF
F0: 00F0..00FF
