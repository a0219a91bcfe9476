#include "widgets/reading_capture.h"

#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>

#include "widgets/theme.h"

namespace widgets {
namespace {

using namespace Qt::StringLiterals;

bool isKana(QChar c) {
    const bool fullWidth = c >= u'ぁ' && c <= u'ヿ';
    const bool halfWidth = c >= u'ｦ' && c <= u'ﾟ';
    return fullWidth || halfWidth || c == u' ' || c == u'　';
}

bool isLatin(QChar c) {
    return (c >= u'!' && c <= u'~') || (c >= u'！' && c <= u'～');
}

bool isReading(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return isKana(c) || isLatin(c); });
}

/// A composition while it is typed, without the Latin letters that have not become kana yet ("たn").
QString settledKana(QString composition) {
    while (!composition.isEmpty() && isLatin(composition.back())) composition.chop(1);
    return composition;
}

}  // namespace

ReadingCapture::ReadingCapture(QLineEdit* name, QLineEdit* reading)
    : QObject(name), name_(name), reading_(reading) {
    name->installEventFilter(this);
    connect(name, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text.isEmpty() && !reading_->isReadOnly()) reading_->clear();
    });
}

bool ReadingCapture::eventFilter(QObject* watched, QEvent* event) {
    if (!name_->isReadOnly() && !reading_->isReadOnly()) {
        if (event->type() == QEvent::InputMethod)
            furigana_capture(static_cast<const QInputMethodEvent&>(*event));
        if (event->type() == QEvent::KeyPress) typed(static_cast<const QKeyEvent&>(*event));
    }
    return QObject::eventFilter(watched, event);
}

void ReadingCapture::furigana_capture(const QInputMethodEvent& event) {
    const QString& composition = event.preeditString();
    if (!event.commitString().isEmpty()) {
        // What replaces text that stood there already has its reading.
        if (event.replacementLength() == 0) confirm(event.commitString(), composition);
        kana_.clear();
    } else if (composition.isEmpty()) {
        kana_.clear();
    }
    const QString kana = settledKana(composition);
    if (isReading(kana) && std::none_of(kana.begin(), kana.end(), isLatin)) kana_ = kana;
}

/// `rest` is still being composed: its kana belong to the next phrase.
void ReadingCapture::confirm(const QString& commit, const QString& rest) {
    QString reading = kana_;
    if (!rest.isEmpty() && reading.endsWith(rest)) reading.chop(rest.size());
    if (isReading(commit)) reading = commit;
    if (!reading.isEmpty()) add(reading);
}

void ReadingCapture::typed(const QKeyEvent& event) {
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QString text = event.text();
    if (command || text.size() != 1 || !text.front().isPrint()) return;
    reading_->setText(replacesAll() ? text : reading_->text() + text);
}

void ReadingCapture::add(const QString& text) {
    const QString kana = domain::convertKana(text, form_);
    if (replacesAll()) {
        reading_->setText(kana);
        return;
    }
    const int caret = name_->hasSelectedText() ? name_->selectionStart() : name_->cursorPosition();
    reading_->setText(caret > 0 ? reading_->text() + kana : kana + reading_->text());
}

bool ReadingCapture::replacesAll() const {
    return name_->hasSelectedText() && name_->selectedText() == name_->text();
}

QWidget* makeReadingForms(ReadingCapture* capture, QWidget* form) {
    auto* frame = new QWidget(form);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * widgets::kGrid);
    row->addWidget(new QLabel(u"「フリガナ」の書式"_s, frame));
    const std::pair<QString, domain::KanaForm> forms[] = {{u"全角ひらがな"_s, domain::KanaForm::Hiragana},
                                                          {u"全角カタカナ"_s, domain::KanaForm::Katakana},
                                                          {u"半角ｶﾀｶﾅ"_s, domain::KanaForm::HalfKatakana}};
    int index = 0;
    for (const auto& [caption, kanaForm] : forms) {
        auto* option = new QRadioButton(caption, frame);
        option->setObjectName(u"optMode_%1"_s.arg(index++));
        option->setChecked(kanaForm == domain::KanaForm::HalfKatakana);
        row->addWidget(option);
        QObject::connect(option, &QRadioButton::clicked, capture,
                         [capture, kanaForm = kanaForm] { capture->furigana_set_mode(kanaForm); });
    }
    row->addStretch();
    return frame;
}

}  // namespace widgets
