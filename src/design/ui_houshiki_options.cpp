#include "design/ui_houshiki_options.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <array>

#include "widgets/theme.h"

namespace design {
namespace {

const std::array<QString, kHoushikiCount> kCaptions{QStringLiteral("個人別計算"), QStringLiteral("総額配分"),
                                                    QStringLiteral("金一封(実行時)"),
                                                    QStringLiteral("特別加算金(実行時)")};

}  // namespace

HoushikiOptions::HoushikiOptions(const QString& name, QWidget* parent, int count) : QFrame(parent) {
    setObjectName(name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < count; ++i) {
        auto* option = new QRadioButton(kCaptions[static_cast<std::size_t>(i)], this);
        option->setObjectName(QStringLiteral("Option1_%1").arg(i));
        row->addWidget(option);
        connect(option, &QRadioButton::clicked, this, [this, i] { Q_EMIT picked(static_cast<Houshiki>(i)); });
        options_.push_back(option);
    }
    row->addStretch();
    QSizePolicy keep = sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    setSizePolicy(keep);
}

void HoushikiOptions::indent() {
    layout()->setContentsMargins(2 * widgets::kGrid, 0, 0, 0);
    layout()->setSpacing(2 * widgets::kGrid);
    setMinimumHeight(options_.front()->sizeHint().height());
}

void HoushikiOptions::offer(const PaymentFlags& offered) {
    for (std::size_t i = 0; i < options_.size(); ++i) options_[i]->setVisible(offered[i]);
    if (offered[0])
        choose(Houshiki::Kojinbetsu);
    else if (offered[1])
        choose(Houshiki::Sougaku);
    else
        choose(std::nullopt);
}

void HoushikiOptions::enableTyped(bool enabled) {
    for (std::size_t i = static_cast<std::size_t>(Houshiki::Kinippu); i < options_.size(); ++i)
        options_[i]->setEnabled(enabled);
}

void HoushikiOptions::choose(std::optional<Houshiki> houshiki) {
    for (std::size_t i = 0; i < options_.size(); ++i) {
        // An exclusive group would not let go of its last choice.
        options_[i]->setAutoExclusive(false);
        options_[i]->setChecked(houshiki && i == static_cast<std::size_t>(*houshiki));
        options_[i]->setAutoExclusive(true);
    }
}

std::optional<Houshiki> HoushikiOptions::chosen() const {
    for (std::size_t i = 0; i < options_.size(); ++i)
        if (options_[i]->isChecked()) return static_cast<Houshiki>(i);
    return std::nullopt;
}

QString HoushikiOptions::captionOf(Houshiki houshiki) const {
    return options_[static_cast<std::size_t>(houshiki)]->text();
}

}  // namespace design
