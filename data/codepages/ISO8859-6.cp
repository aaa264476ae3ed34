# ISO8859-6: Arabic
# origin: converter ibm-1089_P100-1995 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-6 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 1089
name = ISO8859-6
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
A0: 00A0 ---- ---- ---- 00A4 ---- ---- ---- ---- ---- ---- ---- 060C 00AD
B0: ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- ---- 061B ---- ---- ---- 061F
C0: ---- 0621 0622 0623 0624 0625 0626 0627 0628 0629 062A 062B 062C 062D 062E 062F
D0: 0630 0631 0632 0633 0634 0635 0636 0637 0638 0639 063A
E0: 0640..064F
F0: 0650 0651 0652
