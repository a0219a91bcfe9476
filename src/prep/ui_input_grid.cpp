#include "prep/ui_input_grid.h"

#include <QScrollBar>

#include "prep/frmSHaritsuke.h"
#include "prep/pasted_people.h"

namespace prep {

InputGrid::InputGrid(QWidget* parent) : EditTable(parent) {
    setObjectName(QStringLiteral("Picture1"));
    verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
    setGivingWay({Syozoku, Yakusyoku, Shimei});
    setContent({}, {});
}

void InputGrid::setContent(CellRules rules, std::vector<InputRow> rows) {
    rows_ = std::move(rows);
    widgets::EditContent content;
    for (const char16_t* heading : {u"社員コード", u"氏名", u"所属大", u"役職"})
        content.heads.push_back({QString::fromUtf16(heading)});
    content.headText = [this](int row, int column) { return headText(row, column); };
    content.fields.push_back(std::move(rules));
    for (const InputRow& row : rows_) content.texts << row.text;
    EditTable::setContent(std::move(content));
}

QString InputGrid::headText(int row, int column) const {
    const InputRow& person = rows_[static_cast<std::size_t>(row)];
    switch (column) {
        case Code:
            return person.syainCode;
        case Shimei:
            return person.shimei;
        case Syozoku:
            return person.syozoku;
        default:
            return person.yakusyoku;
    }
}

std::vector<InputRow> InputGrid::rows() const {
    std::vector<InputRow> rows = rows_;
    for (int row = 0; row < rowCount(); ++row) rows[static_cast<std::size_t>(row)].text = text(row);
    return rows;
}

bool InputGrid::takesPaste(const QString& clipboard) {
    const auto people = readPastedPeople(clipboard, rows(), rules());
    if (!people) return false;
    frmSHaritsuke preview(*people, rules(), window());
    if (preview.exec() != QDialog::Accepted) return true;
    std::vector<Given> texts;
    for (const PastedPerson& person : *people)
        if (person.fate == PastedPerson::Fate::Changes) texts.push_back({{person.row, 0}, person.text});
    give(texts);
    return true;
}

}  // namespace prep
