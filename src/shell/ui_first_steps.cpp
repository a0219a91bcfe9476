#include "shell/ui_first_steps.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "company/first_steps.h"
#include "forms/global_record.h"
#include "widgets/theme.h"

namespace shell {

using namespace Qt::StringLiterals;

FirstSteps::FirstSteps(forms::House& house, widgets::Form* menu)
    : Card(menu),
      house_(house),
      menu_(menu),
      steps_(new QLabel(this)),
      next_(new QPushButton(u"次の準備へ(&N)"_s, this)),
      dismiss_(new QPushButton(u"案内を閉じる(&K)"_s, this)) {
    setObjectName(u"Guide"_s);
    auto* title = new QLabel(u"はじめての準備"_s, this);
    widgets::setTone(title, widgets::Tone::Heading);
    steps_->setTextFormat(Qt::PlainText);
    steps_->setObjectName(u"GuideSteps"_s);
    next_->setObjectName(u"GuideNext"_s);
    dismiss_->setObjectName(u"GuideDismiss"_s);
    auto* row = new QHBoxLayout;
    row->addWidget(next_);
    row->addStretch(1);
    row->addWidget(dismiss_);
    body()->addWidget(title);
    body()->addWidget(steps_);
    body()->addLayout(row);
    connect(next_, &QPushButton::clicked, this,
            [this] { menu_->showChild(house_.screens.create(screen_, house_, menu_)); });
    connect(dismiss_, &QPushButton::clicked, this, [this] {
        company::dismissGuide(house_.global.places(), house_.global.panels.folder);
        hide();
    });
}

void FirstSteps::refresh() {
    const auto& global = house_.global;
    const auto steps = company::firstSteps(*global.cn_main);
    QStringList lines;
    const company::FirstStep* next = nullptr;
    for (const company::FirstStep& step : steps) {
        const bool isNext = !step.done && !next;
        if (isNext) next = &step;
        lines << (step.done ? u"✓　"_s : isNext ? u"→　"_s : u"・　"_s) + step.text;
    }
    setVisible(next && !company::guideDismissed(global.places(), global.panels.folder));
    if (!next) return;
    steps_->setText(lines.join(u'\n'));
    screen_ = next->screen;
    next_->setEnabled(house_.screens.has(screen_));
}

}  // namespace shell
