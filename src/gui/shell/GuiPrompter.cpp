#include "gui/shell/GuiPrompter.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

namespace r6183::gui {

namespace {

QMessageBox::Icon QtIcon(Icon icon) {
  switch (icon) {
    case Icon::None: return QMessageBox::NoIcon;
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::Question: return QMessageBox::Question;
    case Icon::Exclamation: return QMessageBox::Warning;
    case Icon::Information: return QMessageBox::Information;
  }
  return QMessageBox::NoIcon;
}

struct Choice {
  Answer answer;
  const char* text;
  QMessageBox::ButtonRole role;
};

std::vector<Choice> ChoicesOf(Buttons buttons) {
  using R = QMessageBox::ButtonRole;
  switch (buttons) {
    case Buttons::Ok: return {{Answer::Ok, "OK", R::AcceptRole}};
    case Buttons::OkCancel: return {{Answer::Ok, "OK", R::AcceptRole}, {Answer::Cancel, "Cancel", R::RejectRole}};
    case Buttons::YesNo: return {{Answer::Yes, "&Yes", R::YesRole}, {Answer::No, "&No", R::NoRole}};
    case Buttons::YesNoCancel:
      return {{Answer::Yes, "&Yes", R::YesRole}, {Answer::No, "&No", R::NoRole},
              {Answer::Cancel, "Cancel", R::RejectRole}};
    case Buttons::RetryCancel:
      return {{Answer::Retry, "&Retry", R::AcceptRole}, {Answer::Cancel, "Cancel", R::RejectRole}};
    case Buttons::AbortRetryIgnore:
      return {{Answer::Abort, "&Abort", R::RejectRole}, {Answer::Retry, "&Retry", R::AcceptRole},
              {Answer::Ignore, "&Ignore", R::AcceptRole}};
  }
  return {{Answer::Ok, "OK", R::AcceptRole}};
}

}  // namespace

Answer GuiPrompter::Message(const std::string& text, Buttons buttons, Icon icon, const std::string& title) {
  QWidget* parent = parent_ ? parent_.data() : QApplication::activeWindow();
  QMessageBox box(QtIcon(icon), QString::fromStdString(title), QString::fromStdString(text).replace("\r\n", "\n"), QMessageBox::NoButton,
                  parent);
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
  const auto choices = ChoicesOf(buttons);
  std::vector<QPushButton*> pressed;
  for (const Choice& c : choices) pressed.push_back(box.addButton(c.text, c.role));
  box.setDefaultButton(pressed.front());
  // Escape gives the answer of a Cancel or No button where there is one.
  for (std::size_t i = 0; i < choices.size(); ++i)
    if (choices[i].answer == Answer::Cancel || (choices[i].answer == Answer::No && buttons == Buttons::YesNo))
      box.setEscapeButton(pressed[i]);
  box.exec();
  for (std::size_t i = 0; i < choices.size(); ++i)
    if (box.clickedButton() == pressed[i]) return choices[i].answer;
  return buttons == Buttons::Ok ? Answer::Ok : buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

QString GuiPrompter::QtFilter(const std::string& filter) {
  // pairs of "text|pattern"; Qt wants the text, which carries the pattern in brackets
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString text = parts[i];
    if (!text.contains('(')) text += " (" + parts[i + 1] + ")";
    out << text;
  }
  if (out.isEmpty() && !filter.empty()) out << QString::fromStdString(filter);
  return out.join(";;");
}

QString GuiPrompter::StartPath(const std::string& initialName) const {
  const QString name = QString::fromStdString(initialName);
  if (QFileInfo(name).isAbsolute()) return name;
  QString dir = lastDir_;
  if (dir.isEmpty()) dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  if (dir.isEmpty() || !QDir(dir).exists()) dir = QDir::homePath();
  return name.isEmpty() ? dir : QDir(dir).filePath(name);
}

std::optional<std::string> GuiPrompter::Chosen(const QString& path) {
  if (path.isEmpty()) return std::nullopt;
  lastDir_ = QFileInfo(path).absolutePath();
  return path.toStdString();
}

std::optional<std::string> GuiPrompter::OpenFile(const FileChoice& choice) {
  return Chosen(QFileDialog::getOpenFileName(parent_, QString::fromStdString(choice.title),
                                             StartPath(choice.initialName), QtFilter(choice.filter)));
}

std::optional<std::string> GuiPrompter::SaveFile(const FileChoice& choice) {
  const QFileDialog::Options options = choice.confirmOverwrite ? QFileDialog::Options() : QFileDialog::DontConfirmOverwrite;
  return Chosen(QFileDialog::getSaveFileName(parent_, QString::fromStdString(choice.title),
                                             StartPath(choice.initialName), QtFilter(choice.filter), nullptr, options));
}

}  // namespace r6183::gui
