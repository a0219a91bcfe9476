#include "forms/menu_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/guard.h"
#include "widgets/theme.h"

namespace forms {
namespace {

constexpr int kManyEntries = 5;  ///< more buttons than this stand in two columns
const QString kHelpControl = QStringLiteral("Command11");

constexpr QPoint kMenuPlace(widgets::twips(45), widgets::twips(600));

bool closes(const MenuEntry& entry) {
    return entry.screen.isEmpty() && !entry.action;
}
bool standsBelow(const MenuEntry& entry) {
    return closes(entry) || entry.below || entry.control == kHelpControl;
}

}  // namespace

MenuForm::MenuForm(const QString& name, const QString& caption, House& house, QWidget* parent,
                   std::vector<MenuEntry> entries)
    : Form(name, caption, parent), house_(house), entries_(std::move(entries)) {
    setMinimumSize(widgets::twips(7770), widgets::twips(4770));
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(3 * widgets::kGrid, 3 * widgets::kGrid, 3 * widgets::kGrid, 2 * widgets::kGrid);
    root->setSpacing(2 * widgets::kGrid);
    head_ = new QVBoxLayout;
    heading_ = make<QLabel>(QStringLiteral("lblTitle"), caption);
    widgets::setTone(heading_, widgets::Tone::Title);
    head_->addWidget(heading_);
    root->addLayout(head_);
    addEntries();
}

void MenuForm::setHeading(const QString& text) {
    heading_->setText(text);
}

void MenuForm::addEntries() {
    auto* root = static_cast<QVBoxLayout*>(layout());
    auto* grid = new QGridLayout;
    grid->setSpacing(widgets::kGrid + widgets::kGrid / 2);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    const auto below = std::count_if(entries_.begin(), entries_.end(), standsBelow);
    const int above = static_cast<int>(entries_.size()) - static_cast<int>(below);
    const int columns = above > kManyEntries ? 2 : 1;
    int placed = 0;
    for (const MenuEntry& entry : entries_) {
        QPushButton* button = addButton(entry);
        if (standsBelow(entry) && !closes(entry)) {
            bottom->insertWidget(0, button);
            bottom_.append(button);
        } else if (closes(entry)) {
            bottom->addWidget(button);
            bottom_.prepend(button);
            setCancelButton(button);
        } else {
            button->setMinimumHeight(6 * widgets::kGrid);
            button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
            grid->addWidget(button, placed / columns, placed % columns);
            ++placed;
        }
    }
    root->addLayout(grid);
    root->addStretch();
    root->addLayout(bottom);
}

QPushButton* MenuForm::addButton(const MenuEntry& entry) {
    auto* button = make<QPushButton>(entry.control, entry.caption);
    if (!entry.screen.isEmpty() && !house_.screens.has(entry.screen)) {
        button->setEnabled(false);
        button->setToolTip(QStringLiteral("この画面はまだ使えません。"));
    }
    if (entry.output) setOutput(button, *entry.output);
    connect(button, &QPushButton::clicked, this, [this, entry] { run(entry); });
    QWidget* before = button;
    for (QPushButton* last : bottom_) {
        setTabOrder(before, last);
        before = last;
    }
    return button;
}

void MenuForm::run(const MenuEntry& entry) {
    guarded(this, [&] {
        if (entry.prepare) entry.prepare(house_.global);
        if (closes(entry)) {
            reject();
        } else if (entry.action) {
            entry.action();
        } else {
            setHourglass();
            if (QDialog* child = house_.screens.create(entry.screen, house_, this)) showChild(child);
        }
    });
}

void MenuForm::place() {
    placeAsMenu(this);
}

// The window goes, the dialog goes on: QDialog would take its own setVisible(false) for its end.
void MenuForm::deactivated() {
    QWidget::setVisible(false);
}

/// Where it stood: the user may have moved it.
void MenuForm::activated() {
    QWidget::setVisible(true);
}

void placeAsMenu(widgets::Form* screen) {
    if (const QWidget* main = mainWindowOf(screen))
        screen->move(main->pos() + kMenuPlace);
    else
        widgets::center_form(screen);
}

QWidget* mainWindowOf(const QWidget* screen) {
    for (QWidget* widget = screen ? screen->parentWidget() : nullptr; widget;
         widget = widget->parentWidget()) {
        if (widget->isWindow() && widget->objectName() == QStringLiteral("frmMain")) return widget;
    }
    return nullptr;
}

QWidget* mainControl(const QWidget* screen, const QString& name) {
    QWidget* main = mainWindowOf(screen);
    if (!main) return nullptr;
    const auto named = main->findChildren<QWidget*>(name);
    const auto own = std::find_if(named.begin(), named.end(),
                                  [&](const QWidget* widget) { return widget->window() == main; });
    return own == named.end() ? nullptr : *own;
}

}  // namespace forms
