#pragma once

#include <QApplication>
#include <QTest>
#include <memory>
#include <optional>
#include <utility>

#include "store/datastructs.h"
#include "support/iniFile.h"
#include "support/messageBox.h"
#include "tools/analyzerProcess.h"
#include "tools/dialogs.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "upload/lineRest.h"
#include "upload/uploadCommand.h"

/// The Upload command in a window with a list of one record.
class TcommandFixture {
 protected:
  void start() {
    forgetBrokenOff();
    owner_ = std::make_unique<QWidget>();
    owner_->show();
    records_ = {};
    append(records_, makeRecord({"A-1"}));
    replaceMessageBox([this](QWidget*, const TmessageText& message, auto, const QString&) {
      boxes_ << message.text;
      for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window != owner_.get()) boxes_ << "behind it: " + window->objectName().toLatin1();
      }
      return QMessageBox::Ok;
    });
  }
  static void end() {
    replaceMessageBox({});
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
  }

  /// Returns the analyzer's place.
  std::optional<QString> upload() { return uploadRecords(owner_.get(), records_, settings_); }
  std::optional<QString> upload(const TdialogSteps& steps) {
    std::optional<QString> place;
    steps.during([&] { place = upload(); });
    return place;
  }
  /// The texts of the boxes since the last call, and the windows behind them.
  QByteArrayList takeBoxes() { return std::exchange(boxes_, {}); }

  static inline const TdialogSteps connecting = clickIn("TcomSelectFrm", "btnConnect");

  TtestFolder folder_;
  const TiniFile settings_{folder_ / "QT484pc.ini"};
  std::unique_ptr<QWidget> owner_;
  TequipRecTable records_;

 private:
  QByteArrayList boxes_;
};
