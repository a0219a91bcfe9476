#pragma once
#include <QString>

namespace domain {

/// The three forms of a reading (「フリガナ」の書式), with the numbers that the option buttons carry.
enum class KanaForm { Hiragana = 3, Katakana = 4, HalfKatakana = 8 };

/// Brings the kana of a text into one form, hiragana and katakana of both widths alike. Other characters
/// follow the width of the form (Ａ and A, the two blanks); kanji stay as they are. The long vowel sign stays
/// a sign: ガーゼ is がーぜ.
QString convertKana(const QString& text, KanaForm form);

}  // namespace domain
