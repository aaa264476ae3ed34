# ISO8859-9: Latin 5, Turkish
# origin: converter ibm-920_P100-1995 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-9 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 920
name = ISO8859-9
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
D0: 011E 00D1 00D2 00D3 00D4 00D5 00D6 00D7 00D8 00D9 00DA 00DB 00DC 0130 015E 00DF
E0: 00E0..00EF
F0: 011F 00F1 00F2 00F3 00F4 00F5 00F6 00F7 00F8 00F9 00FA 00FB 00FC 0131 015F 00FF
