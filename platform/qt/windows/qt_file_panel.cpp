#include "platform/qt/windows/qt_file_panel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStringList>
#include <utility>

#include "platform/qt/windows/local_path.h"

namespace quillmar {

/// QFileDialog asks in a nested event loop whether to replace a file, so the dialog may be
/// abandoned during accept().
class FileDialog final : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;

  void accept() override {
    isAccepting_ = true;
    QFileDialog::accept();
    isAccepting_ = false;
    if (isAbandoned_) deleteLater();
  }

  /// Closes the dialog without a signal and deletes it in a later iteration of the main loop.
  void abandon() {
    disconnect();
    hide();
    setParent(nullptr);
    for (QMessageBox* const question : findChildren<QMessageBox*>()) question->reject();
    isAbandoned_ = true;
    if (!isAccepting_) deleteLater();
  }

 private:
  bool isAccepting_ = false;
  bool isAbandoned_ = false;
};

namespace {

/// Matches the extension in upper and lower case, even in dialogs that distinguish them.
QString patternOf(const std::string& extension) {
  QString pattern = QStringLiteral("*.");
  for (const QChar character : QString::fromStdString(extension)) {
    const QChar upper = character.toUpper();
    pattern += upper == character ? QString(character)
                                  : QStringLiteral("[%1%2]").arg(character).arg(upper);
  }
  return pattern;
}

/// Such as "JSON files (*.json)" to the user.
QString filterOf(const FileType& type) {
  QStringList patterns;
  for (const std::string& extension : type.extensions) patterns += patternOf(extension);
  return QString::fromStdString(type.name) + " (" + patterns.join(u' ') + ")";
}

/// Of the last panel in which the user chose a file.
QString& lastFolder() {
  static QString folder;
  return folder;
}

QString initialFolder() {
  if (!lastFolder().isEmpty() && QDir(lastFolder()).exists()) return lastFolder();
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

}  // namespace

QtFilePanel::QtFilePanel(const std::string& title, const std::vector<FileType>& types,
                         QWidget& parent, FilePanelCompletion onEnd)
    : onEnd_(std::move(onEnd)), dialog_(new FileDialog(&parent)) {
  QStringList filters;
  for (const FileType& type : types) filters += filterOf(type);
  dialog_->setWindowTitle(QString::fromStdString(title));
  dialog_->setSupportedSchemes({QStringLiteral("file")});
  dialog_->setOption(QFileDialog::HideNameFilterDetails);
  dialog_->setNameFilters(filters);
  dialog_->setDirectory(initialFolder());
  QObject::connect(dialog_, &QDialog::finished, dialog_, [this](int result) { finished(result); });
}

QtFilePanel::QtFilePanel(const OpenPanel& panel, QWidget& parent, FilePanelCompletion onEnd)
    : QtFilePanel(panel.title, panel.types, parent, std::move(onEnd)) {
  dialog_->setFileMode(QFileDialog::ExistingFile);
  dialog_->open();
}

QtFilePanel::QtFilePanel(const SavePanel& panel, QWidget& parent, FilePanelCompletion onEnd)
    : QtFilePanel(panel.title, {panel.type}, parent, std::move(onEnd)) {
  dialog_->setAcceptMode(QFileDialog::AcceptSave);
  // Some dialogs ask whether to replace a file before they append their default suffix.
  if (!panel.type.extensions.empty()) extension_ = panel.type.extensions.front();
  dialog_->selectFile(QString::fromStdString(panel.proposedName));
  dialog_->open();
}

QtFilePanel::~QtFilePanel() {
  if (dialog_) dialog_->abandon();
  if (!question_) return;
  question_->disconnect();
  question_->hide();
  question_->deleteLater();
}

void QtFilePanel::finished(int result) {
  const QList<QUrl> chosen = dialog_->selectedUrls();
  if (result != QDialog::Accepted || chosen.isEmpty()) return end(std::nullopt);
  const std::optional<std::string> path = localPath(chosen.front());
  const QFileInfo file(chosen.front().toLocalFile());
  if (!path) return end(std::nullopt);
  lastFolder() = file.absolutePath();
  if (extension_.empty() || file.fileName().contains(u'.')) return end(path);
  const std::string complete = *path + "." + extension_;
  if (!QFileInfo::exists(QFile::decodeName(complete.c_str()))) return end(complete);
  askToReplace(complete);
}

void QtFilePanel::askToReplace(const std::string& path) {
  const QString name = QFileInfo(QFile::decodeName(path.c_str())).fileName();
  question_ = new QMessageBox(QMessageBox::Warning, dialog_->windowTitle(),
                              "“" + name + "” already exists. Do you want to replace it?",
                              QMessageBox::Yes | QMessageBox::No, dialog_->parentWidget());
  question_->setTextFormat(Qt::PlainText);
  question_->setDefaultButton(QMessageBox::No);
  QObject::connect(question_, &QDialog::finished, dialog_, [this, path](int button) {
    question_->deleteLater();
    if (button == QMessageBox::Yes) return end(path);
    dialog_->open();
  });
  question_->open();
}

void QtFilePanel::end(std::optional<std::string> path) {
  // A copy, because the function may destroy this panel.
  const FilePanelCompletion onEnd = onEnd_;
  onEnd(std::move(path));
}

}  // namespace quillmar
