#include "domain/field_rules.h"

#include <unicode/ucnv.h>

#include "domain/code_page.h"
#include "store/error.h"

namespace domain {

qint32 byteCount(const QString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* units = reinterpret_cast<const UChar*>(text.utf16());
    const int32_t bytes =
        ucnv_fromUChars(windows31J(), nullptr, 0, units, static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) {
        throw store::Error(store::Error::Reason::Engine, QStringLiteral("文字を変換できません。"));
    }
    return bytes;
}

std::optional<QString> fieldFault(const QString& text, qint32 maxBytes, bool emptyAllowed,
                                  const QString& label) {
    if (text.isEmpty()) {
        if (emptyAllowed) return {};
        return QStringLiteral("未入力は許されません。 ") + label;
    }
    if (text.contains(u'"')) return QStringLiteral("項目中に \" を含むことはできません。 ") + label;
    if (text.contains(u'\'')) return QStringLiteral("項目中に ' を含むことはできません。 ") + label;
    const qint32 count = byteCount(text);
    if (count > maxBytes) {
        return QStringLiteral("項目の長さ(%1)が制限(%2)を越えています。 ").arg(count).arg(maxBytes) + label;
    }
    return {};
}

}  // namespace domain
