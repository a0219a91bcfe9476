#pragma once
#include <QString>
#include <QWidget>
#include <array>

class QRadioButton;

namespace widgets {

/// Three options side by side that stand for the codes "1", "2" and "3": Option1_<index>, Option2_<index>,
/// Option3_<index>. The first one is "not stated".
class OptionRow : public QWidget {
    Q_OBJECT
  public:
    OptionRow(int index, const std::array<QString, 3>& captions, QWidget* parent = nullptr);

    QString code() const;
    /// Any other text leaves the options as they are.
    void setCode(const QString& code);
    void setLocked(bool locked);  ///< disabled

  Q_SIGNALS:
    void chosen();

  private:
    void keepTabStop();
    std::array<QRadioButton*, 3> options_{};
};

}  // namespace widgets
