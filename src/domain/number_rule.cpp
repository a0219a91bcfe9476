#include "domain/number_rule.h"

#include "store/number_text.h"
#include "store/value.h"

namespace domain {

std::optional<QString> numberFault(const QString& text, const NumberRule& rule) {
    const auto fault = [&](const QString& what) { return what + QStringLiteral("･･･") + rule.label; };
    if (text.trimmed().isEmpty()) {
        if (rule.emptyAllowed) return std::nullopt;
        return fault(QStringLiteral("未入力は許されません。"));
    }
    const auto parts = store::readNumber(text);
    if (!parts || !parts->exponent.isEmpty())
        return fault(QStringLiteral(
            "数値の入力が正しくありません。\nカンマ（,）は３桁ごとの区切りです。小数点はピリオド（.）で"
            "入力してください。"));
    if (parts->fraction.size() > rule.decimals)
        return fault(rule.decimals == 0 ? QStringLiteral("整数で入力してください。")
                                        : QStringLiteral("小数点以下は%1桁までです。").arg(rule.decimals));
    const double number = *store::parseNumber(text);
    if (number < rule.least || number > rule.most)
        return fault(QStringLiteral("%1から%2までの数値を入力してください。")
                         .arg(withSeparators(store::Value(rule.least).toText()),
                              withSeparators(store::Value(rule.most).toText())));
    return std::nullopt;
}

QString withSeparators(const QString& text) {
    const auto parts = store::readNumber(text);
    if (!parts || !parts->exponent.isEmpty()) return text;
    QString result = withoutSeparators(text).trimmed();
    const qsizetype point = result.indexOf(u'.');
    const qsizetype first = parts->negative ? 1 : 0;
    for (qsizetype at = (point < 0 ? result.size() : point) - 3; at > first; at -= 3) result.insert(at, u',');
    return result;
}

QString withoutSeparators(const QString& text) {
    return store::readNumber(text) ? QString(text).remove(u',') : text;
}

}  // namespace domain
