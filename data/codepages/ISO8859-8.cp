# ISO8859-8: Hebrew
# origin: converter ibm-5012_P100-1999 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-8 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 916
name = ISO8859-8
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
A0: 00A0 ---- 00A2 00A3 00A4 00A5 00A6 00A7 00A8 00A9 00D7 00AB 00AC 00AD 00AE 00AF
B0: 00B0 00B1 00B2 00B3 00B4 00B5 00B6 00B7 00B8 00B9 00F7 00BB 00BC 00BD 00BE
D0: ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- 2017
E0: 05D0..05DF
F0: 05E0 05E1 05E2 05E3 05E4 05E5 05E6 05E7 05E8 05E9 05EA ---- ---- 200E 200F
