#include "connectivity/FlexGrid.h"

#include <algorithm>

#include "shell/ErrorNumbers.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr int kDefaultColWidth = 960;  // twips
constexpr int kDefaultRowHeight = 240;
constexpr std::string_view kModule = "FlexGrid";
}  // namespace

FlexGrid::FlexGrid(int cols, int rows)
    : cols_(cols),
      cells_(static_cast<std::size_t>(std::max(rows, 1)), std::vector<std::string>(static_cast<std::size_t>(cols))),
      colWidths_(static_cast<std::size_t>(cols), kDefaultColWidth),
      rowHeights_(cells_.size(), 0) {}

void FlexGrid::SetRows(int rows) {
  rows = std::max(rows, 1);  // the heading stays
  cells_.resize(static_cast<std::size_t>(rows), std::vector<std::string>(static_cast<std::size_t>(cols_)));
  rowHeights_.resize(cells_.size(), 0);
  row_ = std::min(row_, rows - 1);
  if (OnRows) OnRows();
}

void FlexGrid::SetRow(int row) {
  if (row < 0 || row >= Rows()) throw RuntimeError(err::InvalidRowValue);
  row_ = row;
  if (OnCurrent) OnCurrent();
}

void FlexGrid::SetCol(int col) {
  if (col < 0 || col >= cols_) throw RuntimeError(err::InvalidColValue);
  col_ = col;
}

void FlexGrid::SetText(std::string text) {
  cells_[static_cast<std::size_t>(row_)][static_cast<std::size_t>(col_)] = std::move(text);
  if (OnCell) OnCell(row_, col_);
}

const std::string& FlexGrid::TextMatrix(int row, int col) const {
  if (row < 0 || row >= Rows()) throw RuntimeError(err::InvalidRowValue);
  if (col < 0 || col >= cols_) throw RuntimeError(err::InvalidColValue);
  return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

void FlexGrid::SetColWidth(int col, int twips) {
  if (col < 0 || col >= cols_) throw RuntimeError(err::InvalidColValue);
  colWidths_[static_cast<std::size_t>(col)] = twips;
  if (OnRows) OnRows();
}

int FlexGrid::RowHeight(int row) const {
  if (row < 0 || row >= Rows()) throw RuntimeError(err::InvalidRowValue);
  const int h = rowHeights_[static_cast<std::size_t>(row)];
  return h > 0 ? h : kDefaultRowHeight;
}

void FlexGrid::SetRowHeight(int row, int twips) {
  if (row < 0 || row >= Rows()) throw RuntimeError(err::InvalidRowValue);
  rowHeights_[static_cast<std::size_t>(row)] = twips;
}

void FlexGrid::AddItem(const std::string& line) {
  std::vector<std::string> cells(static_cast<std::size_t>(cols_));
  std::size_t from = 0;
  for (std::size_t c = 0; c < cells.size(); ++c) {
    const std::size_t tab = line.find('\t', from);
    cells[c] = line.substr(from, tab == std::string::npos ? std::string::npos : tab - from);
    if (tab == std::string::npos) break;
    from = tab + 1;
  }
  cells_.push_back(std::move(cells));
  rowHeights_.push_back(0);
  if (OnRows) OnRows();
}

void LoadFlexQ(Session& s, FlexGrid& grid, const std::string& a, const std::string& b, const std::string& c,
               const std::string& d, const std::string& e) {
  step(s.journal(), Where{kModule, "LoadFlexQ"}, [&] {
    const std::string* texts[] = {&a, &b, &c, &d, &e};
    for (int col = 0; col < 5; ++col) {
      grid.SetCol(col);
      grid.SetText(*texts[col]);
    }
  });
}

void AddItemToFlexQ(Session& s, FlexGrid& grid, const std::string& a, const std::string& b, const std::string& c,
                    const std::string& d, const std::string& e) {
  step(s.journal(), Where{kModule, "AddItemToFlexQ"}, [&] {
    if (grid.Rows() >= 2) {
      grid.SetRow(1);
      grid.SetCol(0);
      if (grid.Text().empty()) {
        LoadFlexQ(s, grid, a, b, c, d, e);
        return;
      }
    }
    grid.AddItem(a + '\t' + b + '\t' + c + '\t' + d + '\t' + e);
  });
}

}  // namespace r6183
