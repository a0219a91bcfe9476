#include "domain/kana.h"

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <memory>

#include "store/error.h"

namespace domain {
namespace {

std::unique_ptr<icu::Transliterator> transliterator(const char* id) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> made(
        icu::Transliterator::createInstance(icu::UnicodeString::fromUTF8(id), UTRANS_FORWARD, status));
    if (U_FAILURE(status)) {
        throw store::Error(store::Error::Reason::Engine, QStringLiteral("かなの変換表が見つかりません。"));
    }
    return made;
}

QString transliterate(const icu::Transliterator& rule, const QString& text) {
    icu::UnicodeString units(reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()));
    rule.transliterate(units);
    return QString(reinterpret_cast<const QChar*>(units.getBuffer()), units.length());
}

QString widened(const QString& text) {
    static const auto rule = transliterator("Halfwidth-Fullwidth");
    return transliterate(*rule, text);
}

QString narrowed(QString text) {
    static const auto rule = transliterator("Fullwidth-Halfwidth");
    // The rule leaves the free-standing sound marks wide.
    text.replace(u'゛', u'ﾞ').replace(u'゜', u'ﾟ');
    return transliterate(*rule, text);
}

// The two blocks of full-width kana lie in the same order. The rules of the library are not used between
// them, since they spell the long vowel sign out (ガーゼ would become があぜ).
constexpr char16_t kBlockDistance = u'ァ' - u'ぁ';

QString shifted(QString text, QChar first, QChar last, int distance) {
    for (QChar& c : text) {
        const bool iterationMark = c.unicode() == first.unicode() + (u'ヽ' - u'ァ') ||
                                   c.unicode() == first.unicode() + (u'ヾ' - u'ァ');
        if ((c >= first && c <= last) || iterationMark) c = QChar(c.unicode() + distance);
    }
    return text;
}

QString toKatakana(const QString& text) {
    return shifted(text, u'ぁ', u'ゖ', kBlockDistance);
}
QString toHiragana(const QString& text) {
    return shifted(text, u'ァ', u'ヶ', -kBlockDistance);
}

}  // namespace

QString convertKana(const QString& text, KanaForm form) {
    switch (form) {
        case KanaForm::Hiragana:
            return toHiragana(widened(text));
        case KanaForm::Katakana:
            return toKatakana(widened(text));
        case KanaForm::HalfKatakana:
            return narrowed(toKatakana(text));
    }
    return text;
}

}  // namespace domain
