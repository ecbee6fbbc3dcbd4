// What the controls of a facility record hold, in words.
#pragma once

#include <QString>

namespace vantrelix::qt {
class LookAnt;
class LookLine;
}  // namespace vantrelix::qt

namespace vantrelix::demo {

QString antennaText(const qt::LookAnt& ant);
QString mountingText(const qt::LookAnt& ant);
QString lineText(const qt::LookLine& line);
// Every value, a line each.
QString recordText(const qt::LookAnt& ant, const qt::LookLine& line);

}  // namespace vantrelix::demo
