#include "adapters/qt/file_box.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>

#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

namespace {

// A program that was started from a menu works in a folder that nobody chose.
QString StartIn(const std::filesystem::path& folder) {
  QString wanted = QFile::decodeName(folder.c_str());
  if (!wanted.isEmpty() && QDir(wanted).exists()) return wanted;
  QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

void Prepare(QFileDialog& box, const FileKind& kind, const std::filesystem::path& folder) {
  box.setOption(QFileDialog::DontUseNativeDialog);
  box.setNameFilter(QLatin1String(kind.filter));
  box.setDefaultSuffix(QLatin1String(kind.ending));
  box.setDirectory(StartIn(folder));
  box.setWindowModality(Qt::ApplicationModal);
}

std::optional<std::filesystem::path> Answered(QtLoop& loop, QFileDialog& box) {
  box.show();
  loop.RunUntil([&box] { return !box.isVisible(); });
  const QStringList files = box.selectedFiles();
  if (box.result() != QDialog::Accepted || files.isEmpty()) return std::nullopt;
  return std::filesystem::path(QFile::encodeName(files.front()).toStdString());
}

}  // namespace

std::optional<std::filesystem::path> AskForFile(QtLoop& loop, QWidget* above, const char* title,
                                                const FileKind& kind, const std::filesystem::path& folder) {
  QFileDialog box(above, QLatin1String(title));
  Prepare(box, kind, folder);
  box.setAcceptMode(QFileDialog::AcceptOpen);
  box.setFileMode(QFileDialog::ExistingFile);
  return Answered(loop, box);
}

std::optional<std::filesystem::path> AskForNewFile(QtLoop& loop, QWidget* above, const char* title,
                                                   const FileKind& kind, const std::filesystem::path& folder,
                                                   const std::string& name) {
  QFileDialog box(above, QLatin1String(title));
  Prepare(box, kind, folder);
  box.setOption(QFileDialog::DontConfirmOverwrite);
  box.setAcceptMode(QFileDialog::AcceptSave);
  box.setFileMode(QFileDialog::AnyFile);
  box.selectFile(Shown(name));
  return Answered(loop, box);
}

}  // namespace mirelo::qt
