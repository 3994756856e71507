#pragma once
// A list whose lines hold their columns apart with tabs, drawn in columns that start at
// fixed offsets, and the heads that stand over them.
#include <QStyledItemDelegate>

#include <vector>

class QBoxLayout;
class QListWidget;

namespace r6183::gui {

class ColumnLines : public QStyledItemDelegate {
 public:
  // `stops`: the offset of each column from the left of the line, the first 0.
  ColumnLines(std::vector<int> stops, QObject* parent) : QStyledItemDelegate(parent), stops_(std::move(stops)) {}
  void paint(QPainter* p, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  std::vector<int> stops_;
};

// Draws `list` in columns at `stops` and returns a row of heads (objectName, text) placed
// over them.
QBoxLayout* ColumnHeads(QListWidget& list, const std::vector<int>& stops,
                        const std::vector<std::pair<const char*, const char*>>& heads);

}  // namespace r6183::gui
