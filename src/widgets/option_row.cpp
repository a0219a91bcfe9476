#include "widgets/option_row.h"

#include <QHBoxLayout>
#include <QRadioButton>

#include "widgets/theme.h"

namespace widgets {

OptionRow::OptionRow(int index, const std::array<QString, 3>& captions, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * kGrid);
    for (std::size_t i = 0; i < options_.size(); ++i) {
        options_[i] = new QRadioButton(captions[i], this);
        options_[i]->setObjectName(QStringLiteral("Option%1_%2").arg(i + 1).arg(index));
        connect(options_[i], &QRadioButton::clicked, this, [this] { Q_EMIT chosen(); });
        connect(options_[i], &QRadioButton::toggled, this, [this] { keepTabStop(); });
        row->addWidget(options_[i]);
    }
    row->addStretch();
}

QString OptionRow::code() const {
    for (std::size_t i = 0; i < options_.size(); ++i)
        if (options_[i]->isChecked()) return QString::number(i + 1);
    return {};
}

void OptionRow::setCode(const QString& code) {
    for (std::size_t i = 0; i < options_.size(); ++i)
        if (code == QString::number(i + 1)) options_[i]->setChecked(true);
}

void OptionRow::setLocked(bool locked) {
    setEnabled(!locked);
}

/// Tab enters a group where its choice is, as the arrow keys leave it.
void OptionRow::keepTabStop() {
    const bool none = code().isEmpty();
    for (QRadioButton* option : options_)
        option->setFocusPolicy(none || option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace widgets
