#include "personnel/code_book.h"

#include <algorithm>

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

Finding refuse(const QString& text, const QString& item) {
    return Fault{text + u"･･･"_s + item, u"入力エラー"_s};
}

bool isUnder(const CodeChoice& entry, const QString& item, const QString& syozokuDai) {
    return item != u"所属小"_s || entry.parent == syozokuDai;
}

/// A code typed without its zeros: 5 for 05, 12 for 0012.
bool isCode(const CodeChoice& entry, const QString& cell) {
    return entry.code == cell || entry.code == cell.rightJustified(entry.code.size(), u'0');
}

}  // namespace

const std::vector<CodeChoice>& CodeBook::entries(const QString& item) {
    auto book = books_.find(item);
    if (book == books_.end()) book = books_.insert(item, codeChoices(cn_, item));
    return *book;
}

bool CodeBook::hasEntries(const QString& item, const QString& syozokuDai) {
    const auto& all = entries(item);
    return std::any_of(all.begin(), all.end(),
                       [&](const CodeChoice& entry) { return isUnder(entry, item, syozokuDai); });
}

Finding CodeBook::resolve(const QString& item, QString& cell, QDate on, const QString& syozokuDai) {
    std::vector<const CodeChoice*> byCode, byName;
    for (const CodeChoice& entry : entries(item)) {
        if (!isUnder(entry, item, syozokuDai)) continue;
        if (isCode(entry, cell)) byCode.push_back(&entry);
        if (entry.name == cell) byName.push_back(&entry);
    }
    const auto& found = byCode.empty() ? byName : byCode;
    if (found.empty()) return refuse(u"「%1」はマスタにありません。"_s.arg(cell), item);
    const bool two =
        !byCode.empty() && std::any_of(byName.begin(), byName.end(),
                                       [&](const CodeChoice* named) { return named != byCode.front(); });
    if (two)
        return refuse(
            u"「%1」はコードとしても名称としても別の項目にあり、どちらか決められません。"_s.arg(cell), item);
    if (found.size() > 1)
        return refuse(u"「%1」はマスタに複数あります。コードで入力してください。"_s.arg(cell), item);
    const CodeChoice& entry = *found.front();
    if (on.isValid() && entry.since.isValid() && entry.since > on)
        return refuse(u"「%1」は異動日より後に設定されたため選べません。"_s.arg(cell), item);
    cell = entry.code;
    return {};
}

}  // namespace personnel
