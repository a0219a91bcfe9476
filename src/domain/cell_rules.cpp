#include "domain/cell_rules.h"

#include "store/value.h"

namespace domain {

QString CellRules::whole(const QString& text) const {
    const QString shown = format ? format(text) : text;
    return number && number(shown) != number(text) ? text : shown;
}

bool CellRules::differ(const QString& a, const QString& b) const {
    if (a == b) return false;
    return !number || !store::parseNumber(a) || !store::parseNumber(b) || number(a) != number(b);
}

QString CellRules::typed(const QString& pasted) const {
    const QString text = choices.isEmpty() ? plainNumber(pasted) : pasted.trimmed();
    return settle ? settle(text) : text;
}

QString CellRules::fault(const QString& pasted) const {
    if (const auto refusal = save ? save(typed(pasted)) : std::nullopt) return refusal->text;
    if (!choices.isEmpty() && !choices.contains(typed(pasted))) return QStringLiteral("一覧にない値です。");
    return {};
}

QList<QStringList> pastedCells(const QString& clipboard) {
    QString text = clipboard;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    if (text.endsWith(u'\n')) text.chop(1);
    QList<QStringList> lines;
    for (const QString& line : text.split(u'\n')) lines << line.split(u'\t');
    return lines;
}

QString plainNumber(const QString& pasted) {
    QString text = pasted.normalized(QString::NormalizationForm_KC).trimmed();
    if (text.startsWith(u'¥') || text.startsWith(u'\\')) text.remove(0, 1);
    return text.trimmed();
}

}  // namespace domain
