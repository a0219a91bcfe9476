#include "help/help.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <array>

namespace help {

namespace {

constexpr std::array kBooks = {HelpFile::Mhelp, HelpFile::Jhelp, HelpFile::Shelp};
/// The order in which the other books are told to close when the area changes.
constexpr std::array kClosingOrder = {HelpFile::Mhelp, HelpFile::Jhelp, HelpFile::Shelp, HelpFile::Hhelp,
                                      HelpFile::Chelp};
constexpr std::array kExitOrder = {HelpFile::Hhelp, HelpFile::Chelp, HelpFile::Mhelp, HelpFile::Jhelp,
                                   HelpFile::Shelp};

QString titleOf(const QString& html) {
    static const QRegularExpression title(QStringLiteral("<title>(.*?)</title>"));
    return title.match(html).captured(1).trimmed();
}

QString withoutMarks(QString html) {
    static const QRegularExpression head(QStringLiteral("<head>.*?</head>"),
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression inWord(QStringLiteral("</?(a|b|em|kbd|span)\\b[^>]*>"));
    static const QRegularExpression mark(QStringLiteral("<[^>]*>"));
    html.remove(head);
    html.remove(inWord);
    html.replace(mark, QStringLiteral(" "));
    return html.simplified();
}

bool isVoicingMark(QChar c) {
    return c == QChar(0xFF9E) || c == QChar(0xFF9F);
}

/// A text with its differences of width, case and kana removed, and for each of its characters the place in
/// the source.
struct Folded {
    QString text;
    std::vector<int> origin;
};

Folded fold(const QString& source) {
    Folded folded;
    for (int i = 0; i < source.size();) {
        const int length = i + 1 < source.size() && isVoicingMark(source[i + 1]) ? 2 : 1;
        for (QChar c : source.mid(i, length).normalized(QString::NormalizationForm_KC).toCaseFolded()) {
            if (c >= QChar(0x30A1) && c <= QChar(0x30F6)) c = QChar(c.unicode() - 0x60);
            folded.text += c;
            folded.origin.push_back(i);
        }
        i += length;
    }
    folded.origin.push_back(int(source.size()));
    return folded;
}

}  // namespace

QString bunyaOf(HelpFile file) {
    switch (file) {
        case HelpFile::Mhelp:
            return QStringLiteral("menu");
        case HelpFile::Jhelp:
            return QStringLiteral("jin");
        case HelpFile::Shelp:
            return QStringLiteral("syo");
        default:
            return {};
    }
}

void help_bunya(QString& bunya, const QString& programDir, HelpFile target, std::optional<int> topic,
                HelpWindows& windows) {
    QDir::setCurrent(programDir);
    if (bunya != bunyaOf(target)) {
        for (HelpFile other : kClosingOrder)
            if (other != target) windows.closeAll(other);
    }
    bunya = bunyaOf(target);
    if (topic)
        windows.showTopic(target, *topic);
    else
        windows.showStartPage(target);
}

void closeEveryHelp(HelpWindows& windows) {
    for (HelpFile file : kExitOrder) windows.closeAll(file);
}

std::vector<HelpPage> loadHelpPages(const QString& folder) {
    std::vector<HelpPage> pages;
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.html")}, QDir::Files)) {
        const auto place = pageOfName(name);
        QFile file(folder + u'/' + name);
        if (!place || !file.open(QIODevice::ReadOnly)) continue;
        const QString html = QString::fromUtf8(file.readAll());
        pages.push_back({place->first, place->second, titleOf(html), html, withoutMarks(html)});
    }
    std::sort(pages.begin(), pages.end(), [](const HelpPage& a, const HelpPage& b) {
        return std::pair(a.file, a.number) < std::pair(b.file, b.number);
    });
    return pages;
}

const HelpPage* findPage(const std::vector<HelpPage>& pages, HelpFile file, int number) {
    for (const HelpPage& page : pages)
        if (page.file == file && page.number == number) return &page;
    return nullptr;
}

QString pageName(HelpFile file, int number) {
    return QStringLiteral("%1_%2.html").arg(bunyaOf(file)).arg(number);
}

std::optional<std::pair<HelpFile, int>> pageOfName(const QString& name) {
    static const QRegularExpression form(QStringLiteral("^([a-z]+)_([0-9]+)\\.html$"));
    const auto match = form.match(name);
    for (HelpFile file : kBooks)
        if (match.captured(1) == bunyaOf(file)) return std::pair(file, match.captured(2).toInt());
    return std::nullopt;
}

std::vector<std::pair<int, int>> findWord(const QString& text, const QString& word) {
    std::vector<std::pair<int, int>> places;
    const Folded where = fold(text);
    const QString what = fold(word).text;
    if (what.isEmpty()) return places;
    for (int at = 0; (at = int(where.text.indexOf(what, at))) >= 0; at += int(what.size())) {
        const int first = where.origin[size_t(at)];
        places.emplace_back(first, where.origin[size_t(at + what.size())] - first);
    }
    return places;
}

QStringList searchWords(const QString& input) {
    static const QRegularExpression blanks(QStringLiteral("[\\s\\x{3000}]+"));
    return input.split(blanks, Qt::SkipEmptyParts);
}

bool pageHolds(const HelpPage& page, const QStringList& words) {
    const QString all = page.title + u' ' + page.text;
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return !findWord(all, word).empty(); });
}

}  // namespace help
