#include "gui/shell/frmHelp.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "gui/shell/Centre.h"
#include "shell/HelpBook.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {

QPushButton* Button(const char* caption, const char* name, QWidget* parent) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

// The help window made before (closing only hides it): a child of `parent`, or a
// window of its own without one.
frmHelp* FindHelpWindow(QWidget* parent) {
  if (parent) return parent->findChild<frmHelp*>(QString(), Qt::FindDirectChildrenOnly);
  for (QWidget* w : QApplication::topLevelWidgets())
    if (auto* help = qobject_cast<frmHelp*>(w)) return help;
  return nullptr;
}

}  // namespace

frmHelp::frmHelp(const QString& indexPath, const QString& caption, QWidget* parent)
    : QWidget(parent, Qt::Window), indexPath_(indexPath), txtHelp_(new QTextBrowser(this)) {
  setObjectName("frmHelp");
  setWindowTitle(caption);
  txtHelp_->setObjectName("txtHelp");
  txtHelp_->setOpenLinks(true);
  txtHelp_->setOpenExternalLinks(false);

  QPushButton* cmdContents = Button("&Contents", "cmdContents", this);
  QPushButton* cmdBack = Button("&Back", "cmdBack", this);
  QPushButton* cmdForward = Button("&Forward", "cmdForward", this);
  cmdBack->setEnabled(false);
  cmdForward->setEnabled(false);
  connect(cmdContents, &QPushButton::clicked, this, &frmHelp::ShowContents);
  connect(cmdBack, &QPushButton::clicked, txtHelp_, &QTextBrowser::backward);
  connect(cmdForward, &QPushButton::clicked, txtHelp_, &QTextBrowser::forward);
  connect(txtHelp_, &QTextBrowser::backwardAvailable, cmdBack, &QPushButton::setEnabled);
  connect(txtHelp_, &QTextBrowser::forwardAvailable, cmdForward, &QPushButton::setEnabled);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdContents);
  buttons->addWidget(cmdBack);
  buttons->addWidget(cmdForward);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(buttons);
  layout->addWidget(txtHelp_, 1);
  resize(760, 600);
  ShowContents();
}

void frmHelp::ShowContents() { txtHelp_->setSource(QUrl::fromLocalFile(indexPath_)); }

frmHelp* mnuHelpContents_Click(Session& session, QWidget* parent) {
  if (HelpBlocked(session)) return nullptr;
  const std::string index = HelpBookPath(session);
  if (index.empty()) {
    session.Message("The help pages are not installed: help/index.html was not found in the application "
                    "directory.\nMake sure the application was properly installed.",
                    Buttons::Ok, Icon::Exclamation);
    return nullptr;
  }
  frmHelp* help = FindHelpWindow(parent);
  if (!help) {
    help = new frmHelp(QString::fromStdString(index), QString::fromStdString(session.product.ProductTitle + " Help"),
                       parent);
    CentreWindow(*help, parent);
  }
  help->show();
  help->raise();
  help->activateWindow();
  return help;
}

}  // namespace r6183::gui
