#pragma once

#include <QString>

namespace lumatile {

/// A locale's format of a time, or of a date with one, without the seconds that some have.
QString withoutSeconds(QString format);

}  // namespace lumatile
