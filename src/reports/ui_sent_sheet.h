#pragma once
#include <QWidget>

class QLabel;

namespace reports {

/// What became of a sheet, on the screen that sent it: where the file stands, [開く] and [フォルダーを開く].
/// Hidden until a sheet was sent. Its parts are lblSent, SentOpen and SentFolder.
class SentSheet : public QWidget {
    Q_OBJECT
  public:
    explicit SentSheet(QWidget* parent);
    /// Shows the file, and opens it where there is a desktop. `note` is told in a line of its own.
    void tell(const QString& path, const QString& note = {});

  private:
    QLabel* label_;
    QString path_;
};

}  // namespace reports
