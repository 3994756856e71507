#include "gui/editors/ColumnLines.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>

namespace r6183::gui {

void ColumnLines::paint(QPainter* p, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem o(option);
  initStyleOption(&o, index);
  const QStringList parts = o.text.split('\t');
  o.text.clear();
  const QWidget* w = o.widget;
  w->style()->drawControl(QStyle::CE_ItemViewItem, &o, p, w);
  p->save();
  p->setPen(o.palette.color(o.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
  const QRect r = o.rect.adjusted(4, 0, -2, 0);
  for (int i = 0; i < parts.size(); ++i) {
    const auto at = static_cast<std::size_t>(std::min<int>(i, static_cast<int>(stops_.size()) - 1));
    const int x = r.left() + stops_[at];
    const QRect cell(x, r.top(), r.right() - x, r.height());
    // the station number stands to the right of its column, as it is padded on the left
    const QString text = i == 0 ? parts[i] : parts[i].trimmed();
    p->drawText(cell, Qt::AlignVCenter | Qt::AlignLeft, o.fontMetrics.elidedText(text, Qt::ElideRight, cell.width()));
  }
  p->restore();
}

QBoxLayout* ColumnHeads(QListWidget& list, const std::vector<int>& stops,
                        const std::vector<std::pair<const char*, const char*>>& heads) {
  list.setItemDelegate(new ColumnLines(stops, &list));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(list.frameWidth() + 4, 0, 0, 0);
  row->setSpacing(0);
  for (std::size_t i = 0; i < heads.size(); ++i) {
    auto* head = new QLabel(heads[i].second);
    head->setObjectName(heads[i].first);
    if (i + 1 < stops.size()) head->setFixedWidth(stops[i + 1] - stops[i]);
    row->addWidget(head);
  }
  row->addStretch();
  return row;
}

}  // namespace r6183::gui
