# ASCII: the seven bits of ISO 646 IRV
# origin: converter US-ASCII of ICU 72.1, by vlx-import codepages
# compared with: ANSI_X3.4-1968 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 367
name = ASCII
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
