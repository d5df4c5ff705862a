#pragma once

#include <QLocale>
#include <QString>

namespace lumatile {

/// A moment as the user's locale writes it: the date of medium length, the time short, in the
/// user's time zone.
/// @param timestamp seconds since 1970-01-01 00:00 UTC, as it came from a store: what is not a
///   number counts as 0, what lies outside the years 1 to 9999 as the end that it is beyond
QString editedTime(double timestamp, const QLocale& locale);

}  // namespace lumatile
