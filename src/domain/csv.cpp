#include "domain/csv.h"

#include <algorithm>

#include "store/error.h"

namespace domain {
namespace {

class Parser {
  public:
    explicit Parser(const QString& text) : text_(text) {}

    std::vector<CsvRow> rows() {
        while (at_ < text_.size()) {
            CsvRow row{line_, {}};
            do {
                row.cells << cell().trimmed();
            } while (take(u','));
            endLine();
            const bool blank = std::all_of(row.cells.begin(), row.cells.end(),
                                           [](const QString& each) { return each.isEmpty(); });
            if (!blank) rows_.push_back(std::move(row));
        }
        return std::move(rows_);
    }

  private:
    bool ends() const { return at_ >= text_.size() || text_[at_] == u'\n' || text_[at_] == u'\r'; }

    bool take(QChar c) {
        if (at_ >= text_.size() || text_[at_] != c) return false;
        ++at_;
        return true;
    }

    void endLine() {
        take(u'\r');
        take(u'\n');
        ++line_;
    }

    QString cell() {
        QString content;
        while (!ends() && text_[at_] != u',') {
            if (content.trimmed().isEmpty() && take(u'"'))
                content += quoted();
            else
                content += text_[at_++];
        }
        return content;
    }

    /// Up to the closing quote; two quotes in a row are one of the content.
    QString quoted() {
        const int begun = line_;
        QString content;
        while (at_ < text_.size()) {
            const QChar c = text_[at_++];
            if (c == u'"' && !take(u'"')) return content;
            if (c == u'\n' || (c == u'\r' && (at_ >= text_.size() || text_[at_] != u'\n'))) ++line_;
            content += c;
        }
        throw store::Error(
            store::Error::Reason::Type,
            QStringLiteral("%1行目の「\"」が閉じられていないため、読み込めません。").arg(begun));
    }

    const QString& text_;
    qsizetype at_ = 0;
    int line_ = 1;
    std::vector<CsvRow> rows_;
};

}  // namespace

std::vector<CsvRow> parseCsv(const QString& text) {
    return Parser(text).rows();
}

QString csvLine(const QStringList& cells) {
    QStringList written;
    for (QString cell : cells) {
        const bool plain = std::none_of(cell.begin(), cell.end(), [](QChar c) {
            return c == u',' || c == u'"' || c == u'\n' || c == u'\r';
        });
        written << (plain ? cell : u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"');
    }
    return written.join(u',') + QStringLiteral("\r\n");
}

}  // namespace domain
