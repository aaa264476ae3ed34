# IBM866: PC, Cyrillic, Russian
# origin: converter ibm-866_P100-1995 of ICU 72.1, by vlx-import codepages
# compared with: IBM866 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections:
# - 1A, 1C and 7F, which ICU turns around as the hardware showed them, are controls

id = 866
name = IBM866
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
80: 0410..041F
90: 0420..042F
A0: 0430..043F
B0: 2591 2592 2593 2502 2524 2561 2562 2556 2555 2563 2551 2557 255D 255C 255B 2510
C0: 2514 2534 252C 251C 2500 253C 255E 255F 255A 2554 2569 2566 2560 2550 256C 2567
D0: 2568 2564 2565 2559 2558 2552 2553 256B 256A 2518 250C 2588 2584 258C 2590 2580
E0: 0440..044F
F0: 0401 0451 0404 0454 0407 0457 040E 045E 00B0 2219 00B7 221A 2116 00A4 25A0 00A0
