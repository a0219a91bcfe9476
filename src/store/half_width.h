#pragma once
#include <QString>

namespace store {

/// The half-width form of what an input method writes where a number, a code or a date is meant: full-width
/// digits, letters, signs and the full-width blank. Kana and kanji stay.
QString halfWidth(QString text);

}  // namespace store
