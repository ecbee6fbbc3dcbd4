// Writes the sample pattern files that the project ships, each computed from a textbook formula.
//
// Usage: sample-patterns FOLDER
//
// All values are attenuations below the major lobe in dB; the angle of the vertical cut counts downward from the
// horizon.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "foundation/numbers.h"

namespace {

using vantrelix::fixedDecimals;

constexpr double kPi = 3.14159265358979323846;
constexpr double kSpeedOfLight = 299792458.0;  // m/s
constexpr double kDeepestNull = 60;            // dB; below it a measured pattern is noise

double radians(double degrees) { return degrees * kPi / 180; }

// -180 up to, not including, 180.
double signedAngle(double degrees) { return degrees >= 180 ? degrees - 360 : degrees; }

double attenuation(double field) {
  const double magnitude = std::abs(field);
  return magnitude <= 0 ? kDeepestNull : std::min(kDeepestNull, -20 * std::log10(magnitude));
}

struct Sample {
  std::string file, name, tilt;
  double megahertz;
  double gain;
  std::string gainUnits;
  std::function<double(double)> horizontal, vertical;  // dB at an angle in degrees
};

// Half-wave dipole, C. A. Balanis, "Antenna Theory", 4.6: E(e) = cos(pi/2 sin e) / cos e, e from the horizon.
double dipoleField(double elevation) {
  const double cosine = std::cos(radians(elevation));
  return std::abs(cosine) < 1e-9 ? 0 : std::cos(kPi / 2 * std::sin(radians(elevation))) / cosine;
}

// Uniform linear array, Balanis 6.3: sin(n psi / 2) / (n sin(psi / 2)), psi = 2 pi (d / lambda) sin e.
double arrayFactor(int elements, double spacing, double elevation) {
  const double half = kPi * spacing * std::sin(radians(elevation));
  const double denominator = elements * std::sin(half);
  return std::abs(denominator) < 1e-9 ? 1 : std::sin(elements * half) / denominator;
}

// Directivity of a pattern that is the same in all azimuths: 2 / integral of E(e)^2 cos(e) de over -90..90 degrees.
double omniDirectivity(const std::function<double(double)>& field) {
  constexpr int steps = 3600;
  constexpr double step = 180.0 / steps;
  double integral = 0;
  for (int i = 0; i < steps; ++i) {
    const double e = -90 + (i + 0.5) * step;
    integral += std::pow(field(e), 2) * std::cos(radians(e)) * radians(step);
  }
  return 10 * std::log10(2 / integral);
}

// Half-power sector beam of 3GPP TR 36.814, table A.2.1.1-2: min(12 (angle / width)^2, floor).
double sectorBeam(double angle, double width, double floor) {
  return std::min(12 * std::pow(signedAngle(angle) / width, 2), floor);
}

// Uniformly lit circular aperture, Balanis 12.7: 2 J1(u) / u, u = pi D / lambda sin(angle); behind the dish the
// front-to-back ratio holds.
double dishAttenuation(double angle, double diameterInWavelengths, double frontToBack) {
  const double off = std::abs(signedAngle(angle));
  if (off >= 90) return frontToBack;
  const double u = kPi * diameterInWavelengths * std::sin(radians(off));
  const double field = u < 1e-9 ? 1 : 2 * std::cyl_bessel_j(1.0, u) / u;
  return std::min(frontToBack, attenuation(field));
}

Sample dipole() {
  return {"dipole.msi",
          "Sample dipole 160 MHz",
          "MECHANICAL",
          160,
          0,
          "dBd",
          [](double) { return 0.0; },
          [](double e) { return attenuation(dipoleField(e)); }};
}

Sample collinear() {
  constexpr int elements = 8;
  constexpr double spacing = 0.8;
  const auto field = [](double e) { return dipoleField(e) * arrayFactor(elements, spacing, e); };
  return {"collinear.msi",
          "Sample collinear 8 elements 450 MHz",
          "MECHANICAL",
          450,
          omniDirectivity(field),
          "dBi",
          [](double) { return 0.0; },
          [field](double e) { return attenuation(field(e)); }};
}

Sample panel() {
  constexpr double azimuthWidth = 65;
  constexpr double elevationWidth = 7;
  constexpr double downtilt = 4;
  // J. D. Kraus, "Antennas", 2-9: gain of a single beam near 32400 / (azimuth width x elevation width), in degrees.
  const double gain = 10 * std::log10(32400 / (azimuthWidth * elevationWidth));
  return {"sector-panel.msi",
          "Sample sector panel 65 deg 1950 MHz",
          "ELECTRICAL",
          1950,
          gain,
          "dBi",
          [](double a) { return sectorBeam(a, azimuthWidth, 25); },
          [](double e) { return sectorBeam(std::fmod(e - downtilt + 360, 360), elevationWidth, 30); }};
}

Sample dish() {
  constexpr double megahertz = 5800;
  constexpr double diameter = 1.2;  // m
  constexpr double efficiency = 0.55;
  const double inWavelengths = diameter / (kSpeedOfLight / (megahertz * 1e6));
  const double gain = 10 * std::log10(efficiency * std::pow(kPi * inWavelengths, 2));
  const auto cut = [inWavelengths](double angle) { return dishAttenuation(angle, inWavelengths, 45); };
  return {"dish.msi", "Sample dish 1.2 m 5800 MHz", "MECHANICAL", megahertz, gain, "dBi", cut, cut};
}

// Width of the lobe around `centre` in which the attenuation stays within 3 dB; 360 where it never leaves it.
double halfPowerWidth(const std::function<double(double)>& cut) {
  double peak = 0;
  for (int tenths = 0; tenths < 3600; ++tenths) {
    if (cut(tenths / 10.0) < cut(peak)) peak = tenths / 10.0;
  }
  const auto edge = [&](double direction) {
    double off = 0;
    while (off < 180 && cut(std::fmod(peak + direction * off + 720, 360)) - cut(peak) <= 3) off += 0.1;
    return off;
  };
  return std::min(360.0, edge(1) + edge(-1));
}

void writeCut(std::ostream& out, const char* title, const std::function<double(double)>& cut) {
  out << title << " 360\n";
  for (int angle = 0; angle < 360; ++angle) {
    out << angle << ' ' << fixedDecimals(std::max(0.0, cut(angle)), 2) << '\n';
  }
}

void write(const Sample& sample, const std::filesystem::path& folder) {
  std::ofstream out(folder / sample.file, std::ios::binary);
  out << "NAME " << sample.name << "\nMAKE Sample\nFREQUENCY " << fixedDecimals(sample.megahertz, 0) << "\nH_WIDTH "
      << fixedDecimals(halfPowerWidth(sample.horizontal), 1) << "\nV_WIDTH "
      << fixedDecimals(halfPowerWidth(sample.vertical), 1) << "\nFRONT_TO_BACK "
      << fixedDecimals(sample.horizontal(180) - sample.horizontal(0), 1) << "\nGAIN " << fixedDecimals(sample.gain, 2)
      << ' ' << sample.gainUnits << "\nTILT " << sample.tilt << '\n';
  writeCut(out, "HORIZONTAL", sample.horizontal);
  writeCut(out, "VERTICAL", sample.vertical);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !std::filesystem::is_directory(argv[1])) {
    std::cerr << "usage: sample-patterns FOLDER (an existing folder)\n";
    return 2;
  }
  for (const Sample& sample : {dipole(), collinear(), panel(), dish()}) write(sample, argv[1]);
  return 0;
}
