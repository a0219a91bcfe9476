#include "reports/list_title.h"

#include <QStringList>

#include "store/date_text.h"

namespace reports {
namespace {

/// What no file may be called by on one of the systems, in its full-width form; ends are cut by the caller.
QString safeFilePart(QString text, qsizetype length) {
    static const QString kForbidden = QStringLiteral("\\/:*?\"<>|");
    static const QString kInstead = QStringLiteral("＼／：＊？”＜＞｜");
    for (QChar& c : text) {
        if (const auto at = kForbidden.indexOf(c); at >= 0) c = kInstead[at];
        if (c.category() == QChar::Other_Control) c = u' ';
    }
    if (text.size() > length) text.truncate(text[length - 1].isHighSurrogate() ? length - 1 : length);
    while (!text.isEmpty() && (text.back() == u'.' || text.back().isSpace())) text.chop(1);
    return text.trimmed();
}

}  // namespace

QString fileStem(const ListTitle& title) {
    const auto iso = [](QDate date) { return date.toString(Qt::ISODate); };
    QString dates = title.kijunbi.empty() ? QString() : iso(title.kijunbi.front());
    if (title.kijunbi.size() > 1) dates += u'～' + iso(title.kijunbi.back());
    QStringList parts;
    // Three bytes a character and 255 for a file's name on most systems.
    for (const QString& part : {dates, safeFilePart(title.company, 20), safeFilePart(title.subject, 25),
                                safeFilePart(title.list, 20)})
        if (!part.isEmpty()) parts << part;
    return parts.join(u'_');
}

QString originLine(const ListTitle& title) {
    QStringList dates;
    for (const QDate date : title.kijunbi) dates << store::formatDate(date);
    QStringList parts;
    if (!dates.isEmpty()) parts << QStringLiteral("基準日 ") + dates.join(u'、');
    if (!title.subject.isEmpty()) parts << title.subject;
    parts << QStringLiteral("作成日 ") + store::formatDate(title.made) << title.company;
    if (!title.remark.isEmpty()) parts.prepend(title.remark);
    return parts.join(u'　');
}

}  // namespace reports
