Example Antennas
TS-7 panel (451.25 MHz)
Pattern data
Attenuation in dB

Angle Attenuation
1E300 1
-1E300 1E308
0 1E999
