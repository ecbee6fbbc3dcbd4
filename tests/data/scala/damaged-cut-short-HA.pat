Example Antennas
TS-7 panel (451.25 MHz)
Patt