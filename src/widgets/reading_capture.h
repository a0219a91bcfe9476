#pragma once
#include <QObject>
#include <QString>

#include "domain/kana.h"

class QInputMethodEvent;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace widgets {

/// Fills the reading of a name while the name is typed (フリガナ).
/// - Typed with the input method: the kana that stood in the composition before it was converted, brought
///   into the chosen form when the phrase is confirmed.
/// - Typed without it: the characters themselves, behind the reading.
/// A phrase confirmed at the very start of a name goes in front of the reading, every other one behind it. A
/// name that is replaced as a whole, or emptied, takes its reading with it. A cancelled composition, a
/// conversion of text that was confirmed before and a pasted text leave the reading as it is: what the
/// reading of kanji is cannot be known then. A locked name captures nothing, nor does a
/// reading that the company does not enter. The user may overtype the
/// reading.
class ReadingCapture : public QObject {
    Q_OBJECT
  public:
    /// Lives as long as `name`.
    ReadingCapture(QLineEdit* name, QLineEdit* reading);

    /// The form of the readings from now on; half-width katakana at first.
    void furigana_set_mode(domain::KanaForm form) { form_ = form; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void furigana_capture(const QInputMethodEvent& event);
    void confirm(const QString& commit, const QString& rest);
    void typed(const QKeyEvent& event);
    void add(const QString& text);
    bool replacesAll() const;

    QLineEdit* name_;
    QLineEdit* reading_;
    QString kana_;  ///< the latest composition that was all kana
    domain::KanaForm form_ = domain::KanaForm::HalfKatakana;
};

/// The options 「フリガナ」の書式, optMode_0 to optMode_2, in a row: "全角ひらがな", "全角カタカナ",
/// "半角ｶﾀｶﾅ" (chosen at first).
QWidget* makeReadingForms(ReadingCapture* capture, QWidget* form);

}  // namespace widgets
