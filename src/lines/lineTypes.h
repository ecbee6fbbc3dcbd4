// Line types and their attenuations out of a plain table, for a line library to be made from.
//
// The table is a comma-separated text (csvRows.h) whose first row names the columns: id, description, MHz, and the
// attenuation as "dB per 100 ft" or "dB per 100 m". Capitals, blanks, signs and the word "per" make no difference to a
// name; "freq_mhz" and "atten dB/100m" do as well. Columns may stand in any order, and further ones are passed over. A
// row is one point of one line; rows of a line have the same id, and its description stands in at least the first.
// Numbers have a point for their decimals, whatever the regional setting.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrelix {

struct LinePoint {
  double freq = 0;   // MHz
  double atten = 0;  // dB per 100 ft
  int row = 0;       // its line of the text
};

struct LineType {
  std::string id;
  std::string description;
  int row = 0;                    // the line of the text that it begins at
  std::vector<LinePoint> points;  // by ascending frequency
};

// Why a line of the text cannot be taken. `row` is 0 where it is the text as a whole.
struct LineFault {
  int row = 0;
  std::string text;
};

// The lines in the order of their first rows. With a fault none of them is to be used. Faults: no header or a column
// that it lacks or has twice; a row of another number of fields; a blank id, one of more than 10 characters or with a
// single quotation mark, which no query can hold; a description of more than 75 characters; control characters; a
// second description or spelling of an id; a frequency or attenuation that is no number above 0; a frequency that
// repeats.
std::vector<LineType> readLineTypes(std::string_view text, std::vector<LineFault>& faults);

}  // namespace vantrelix
