LK-4
850
1.5
8.5
Omni
Dipole array
H
