#pragma once
class QDialog;
class QWidget;

namespace forms {
struct House;
}

namespace reports {

/// The preview of the list of snapshots, all of them in the order of their dates. Throws store::Error when
/// the list cannot be read. The caller shows it.
QDialog* previewSnapshotDates(forms::House& house, QWidget* parent);

}  // namespace reports
