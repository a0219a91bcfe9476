#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "reports/design.h"
#include "store/recordset.h"
#include "store/value.h"

namespace reports {

/// One print: a design, the rows that it shows and what the printing screen sets at run time. A value: it
/// keeps its own copy of the rows, so a preview that stays open depends on no connection and no recordset. A
/// control or column name that does not exist is a bug and asserted.
class Report {
  public:
    using Row = std::vector<store::Value>;

    explicit Report(Design design);

    void setTitle(const QString& title) { title_ = title; }
    const QString& title() const { return title_; }

    /// The data source. Copies the rows; the position of the recordset does not matter and stays.
    void setData(const store::Recordset& recordset);
    void setData(const QStringList& columns, std::vector<Row> rows);
    int rowCount() const { return static_cast<int>(data_->rows.size()); }

    /// Binds a field of Section1 or a function of Section5 to a column of the data; an empty column unbinds
    /// it.
    void bind(Section section, const QString& control, const QString& column);
    /// What stands at the foot of each page: whose list it is.
    void setOrigin(const QString& line) { setCaption(Section::Section3, kOriginLabel, line); }
    void setCaption(Section section, const QString& label, const QString& caption);
    void setVisible(Section section, const QString& control, bool visible);
    void setLeft(Section section, const QString& control, int twips);
    void setWidth(Section section, const QString& control, int twips);

    const Design& design() const { return design_; }
    bool isVisible(const Control& control) const;
    /// The height that the band takes on a page: 0 for a report footer without rows.
    int bandHeight(Section section) const;
    /// What a label, a field or a function prints. `row` counts from 0 and matters to fields, `page` from 1.
    QString textOf(const Control& control, int row, int page) const;

  private:
    struct Data {
        QStringList columns;
        std::vector<Row> rows;
    };
    Control& control(Section section, const QString& name);
    const store::Value& valueOf(const Control& control, int row) const;
    QString functionText(const Control& control) const;

    Design design_;
    QString title_;
    std::shared_ptr<const Data> data_;
};

/// Which rows stand on which page. Plain arithmetic over band heights: nothing is laid out.
class Pagination {
  public:
    explicit Pagination(const Report& report);

    struct Page {
        int firstRow = 0;  ///< from 0
        int rowCount = 0;
        bool reportHeader = false;
        bool reportFooter = false;
    };
    int pageCount() const { return pageCount_; }
    Page page(int number) const;  ///< from 1

  private:
    int rows_ = 0;
    int onFirst_ = 0;  ///< rows that fit beside the report header
    int onOther_ = 0;
    int pageCount_ = 1;
};

}  // namespace reports
