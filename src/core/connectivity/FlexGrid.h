#pragma once
// A grid of text cells as the lists use it: a fixed heading row 0, a current cell
// (Row, Col) through which cells are read and written, column widths and row heights in
// twips. The desktop program mirrors it into a table widget.
#include <functional>
#include <string>
#include <vector>

namespace r6183 {

class Session;

class FlexGrid {
 public:
  explicit FlexGrid(int cols, int rows = 1);

  int Rows() const { return static_cast<int>(cells_.size()); }
  // Rows added are blank; rows beyond the count go. The current row is held inside.
  void SetRows(int rows);
  int Cols() const { return cols_; }
  int Row() const { return row_; }
  int Col() const { return col_; }
  // Raise InvalidRowValue / InvalidColValue outside the grid.
  void SetRow(int row);
  void SetCol(int col);

  const std::string& Text() const { return TextMatrix(row_, col_); }
  void SetText(std::string text);
  const std::string& TextMatrix(int row, int col) const;

  int ColWidth(int col) const { return colWidths_.at(static_cast<std::size_t>(col)); }
  void SetColWidth(int col, int twips);
  int RowHeight(int row) const;
  void SetRowHeight(int row, int twips);

  // A new last row; its cells are the tab-separated parts of `line`.
  void AddItem(const std::string& line);

  // The view: the rows changed in number, a cell changed, the current cell moved.
  std::function<void()> OnRows;
  std::function<void(int row, int col)> OnCell;
  std::function<void()> OnCurrent;

 private:
  int cols_;
  std::vector<std::vector<std::string>> cells_;
  std::vector<int> colWidths_;
  std::vector<int> rowHeights_;  // 0: the default height
  int row_ = 0, col_ = 0;
};

// Writes five texts into the current row, in columns 0 to 4.
void LoadFlexQ(Session& s, FlexGrid& grid, const std::string& a, const std::string& b, const std::string& c,
               const std::string& d, const std::string& e);
// Adds a line of five texts: the blank first row of a grid takes it, otherwise a new row.
void AddItemToFlexQ(Session& s, FlexGrid& grid, const std::string& a, const std::string& b, const std::string& c,
                    const std::string& d, const std::string& e);

}  // namespace r6183
