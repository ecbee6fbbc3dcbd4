Example Antennas
TS-7 panel 451.25 MHz
Pattern data
Attenuation in dB

Angle Attenuation
0 0.0
30 1.1
60 4.2
90 9.6
120 15.5
150 21.0
180 22.0
210 20.8
240 15.4
270 9.7
300 4.1
330 1.2
