Example Antennas
TS-7 panel (451.25 MHz)
Pattern data
Attenuation in dB

Angle Attenuation
-90 30
-45 n/a
Page 2
0 0
45
90 30
