# ISO8859-11: Thai
# origin: converter iso-8859_11-2001 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-11 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 28601
name = ISO8859-11
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
A0: 00A0 0E01 0E02 0E03 0E04 0E05 0E06 0E07 0E08 0E09 0E0A 0E0B 0E0C 0E0D 0E0E 0E0F
B0: 0E10..0E1F
C0: 0E20..0E2F
D0: 0E30 0E31 0E32 0E33 0E34 0E35 0E36 0E37 0E38 0E39 0E3A ---- ---- ---- ---- 0E3F
E0: 0E40..0E4F
F0: 0E50 0E51 0E52 0E53 0E54 0E55 0E56 0E57 0E58 0E59 0E5A 0E5B
