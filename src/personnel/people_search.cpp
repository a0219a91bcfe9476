#include "personnel/people_search.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <numeric>

#include "domain/kana.h"

namespace personnel {
namespace {

constexpr QChar kEndOfPerson = u'\n';
constexpr QChar kEndOfText = u'\t';

QString folded(const QString& text) {
    return domain::convertKana(text, domain::KanaForm::Katakana).toCaseFolded();
}

QStringList wordsOf(const QString& typed) {
    static const QRegularExpression blanks(QStringLiteral("[\\s\\x{3000}]+"));
    return folded(typed).split(blanks, Qt::SkipEmptyParts);
}

bool isBlank(QChar c) {
    return c.isSpace();
}

}  // namespace

void PeopleSearch::setPeople(int count, Text text) {
    count_ = count;
    text_ = std::move(text);
    keys_.clear();
}

/// One conversion for all people: the rules are costly to start, not to run.
void PeopleSearch::prepare() {
    if (!keys_.empty()) return;
    QString all;
    for (int row = 0; row < count_; ++row) {
        for (int i = 0; i < kTexts; ++i) {
            QString text = text_(row, i);
            text.removeIf(isBlank);
            all += text + kEndOfText;
        }
        all += kEndOfPerson;
    }
    keys_.reserve(static_cast<std::size_t>(count_));
    for (const QString& key : folded(all).split(kEndOfPerson, Qt::SkipEmptyParts)) keys_.push_back(key);
}

std::vector<int> PeopleSearch::find(const QString& typed) {
    const QStringList words = wordsOf(typed);
    std::vector<int> rows(static_cast<std::size_t>(count_));
    std::iota(rows.begin(), rows.end(), 0);
    if (words.isEmpty()) return rows;
    prepare();
    std::erase_if(rows, [&](int row) {
        const QString& key = keys_[static_cast<std::size_t>(row)];
        return !std::all_of(words.begin(), words.end(),
                            [&](const QString& word) { return key.contains(word); });
    });
    return rows;
}

}  // namespace personnel
