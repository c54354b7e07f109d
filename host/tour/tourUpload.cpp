#include <QCoreApplication>
#include <QFile>
#include <QMap>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QTest>

#include "host/tour/dialogChain.h"
#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

namespace {

constexpr int analyzerPatience = 10000;  // milliseconds
constexpr int entrySize = 22;            // bytes of a record in the analyzer's copy of the list
constexpr int idSize = 17;

using Tpicture = std::function<void(QWidget*, const char*)>;

/// The simulated analyzer in a process of its own, on the port of a real one and slow enough to watch the progress.
class Tanalyzer {
 public:
  explicit Tanalyzer(const QString& saveFile) {
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/qt484-analyzer"),
                   {QStringLiteral("--baud"), QStringLiteral("4000000"), QStringLiteral("--save"), saveFile});
    expect(process_.waitForReadyRead(analyzerPatience) && process_.readLine().startsWith("listening tcp"),
           QStringLiteral("no simulated analyzer: ") + QString::fromLocal8Bit(process_.readAllStandardError()));
  }
  Tanalyzer(const Tanalyzer&) = delete;
  Tanalyzer& operator=(const Tanalyzer&) = delete;
  ~Tanalyzer() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};

/// The Device IDs in the analyzer's copy of the list, up to the filler after the last one.
QStringList idsIn(const QString& image) {
  QFile file(image);
  expect(file.open(QIODevice::ReadOnly), QStringLiteral("the analyzer has saved nothing"));
  QStringList ids;
  for (QByteArray entry = file.read(entrySize); entry.size() == entrySize && entry[0] != '\xFF';) {
    ids << QString::fromLatin1(entry.first(idSize)).trimmed();
    entry = file.read(entrySize);
  }
  return ids;
}

/// The texts of the grid's rows, ordered by the record numbers of these rows.
QStringList inListOrder(const QStringList& numbers, const QStringList& texts) {
  QMap<int, QString> ordered;
  for (qsizetype row = 0; row < texts.size(); ++row) ordered[numbers[row].toInt()] = texts[row];
  return ordered.values();
}

void choose(const TuserHands& selector, const char* method) {
  selector.click(selector.button(method));
}

void connectBy(const TuserHands& selector) {
  selector.tabTo(selector.button("btnConnect"));
  selector.press(Qt::Key_Space);
}

/// Adds the dialogs of an upload over Ethernet.
void addUpload(TdialogChain& chain, const Tpicture& picture) {
  chain.add("TcomSelectFrm", [picture](const TuserHands& selector) {
    choose(selector, "radEthernet");
    selector.tabTo(selector.control<QWidget>(QStringLiteral("IP1")));
    selector.press(Qt::Key_A, Qt::ControlModifier);
    selector.type(QStringLiteral("127.0.0.1"));
    picture(selector.window(), "connection");
    connectBy(selector);
  });
  chain.add("TfrmProgress", [picture](const TuserHands& progress) {
    const auto* bar = progress.control<QProgressBar>(QStringLiteral("transferProgress"));
    picture(progress.window(), "progress-start");
    expect(QTest::qWaitFor([bar] { return bar->value() > 70; }, analyzerPatience), QStringLiteral("no progress"));
    picture(progress.window(), "progress");
    expect(QTest::qWaitFor([bar] { return bar->value() > 87; }, analyzerPatience), QStringLiteral("no progress"));
    picture(progress.window(), "progress-end");
  });
}

}  // namespace

void Ttour::tourUpload() {
  step(QStringLiteral("upload"), [this] { return uploadList(); });
  step(QStringLiteral("no analyzer"), [this] { return uploadToNobody(); });
}

QString Ttour::uploadList() {
  launch();
  const QString image = temporary_.filePath(QStringLiteral("analyzer.img"));
  const Tanalyzer analyzer(image);
  TdialogChain chain;
  addUpload(chain, [this](QWidget* window, const char* name) { picture(window, QString::fromLatin1(name)); });
  chain.run([this] { frame().press(Qt::Key_U, Qt::ControlModifier); });
  frame().window()->activateWindow();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not come back"));
  const QStringList sent = inListOrder(columnTexts(0), columnTexts(controlNumColumn));
  const QStringList arrived = idsIn(image);
  expect(arrived == sent, QStringLiteral("%1 of %2 records").arg(arrived.size()).arg(sent.size()));
  return QStringLiteral("the analyzer holds the same %1 control numbers in the same order").arg(sent.size());
}

QString Ttour::uploadToNobody() {
  QString said;
  boxes_.pause();
  TdialogChain chain;
  chain.add("TcomSelectFrm", [](const TuserHands& selector) {
    choose(selector, "radUSB");
    connectBy(selector);
  });
  chain.add("QMessageBox", [&](const TuserHands& box) {
    said = qobject_cast<QMessageBox*>(box.window())->text();
    picture(box.window(), QStringLiteral("upload-no-device"));
    box.press(Qt::Key_Return);
  });
  chain.run([this] { frame().press(Qt::Key_U, Qt::ControlModifier); });
  boxes_.resume();
  frame().window()->activateWindow();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not come back"));
  expect(said.startsWith(QStringLiteral("No Deviced Attached.")), QStringLiteral("the message is: ") + said);
  leave();
  return QStringLiteral("one message; the list is unchanged");
}
