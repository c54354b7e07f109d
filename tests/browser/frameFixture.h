#pragma once

#include <QAbstractButton>
#include <QStringList>
#include <QTableView>
#include <functional>
#include <memory>

#include "browser/EquipmentRecordPluginFrame.h"
#include "tools/messageRecorder.h"
#include "tools/testFiles.h"

/// A frame on files in a folder of its own, as a host would have it.
class TframeFixture {
 public:
  /// Three records: c, a, b, with the descriptions "same", "same" and "Alone".
  TframeFixture();

  void writeIni(const QByteArray& text) const { writeBytes(folder / "EquipmentRecord.ini", text); }
  QByteArray ini() const { return linesOf(folder / "EquipmentRecord.ini"); }
  QByteArray data() const { return bytesOf(folder / "DATA/eq.dat"); }

  /// Builds the frame, shows it and waits until it is there.
  void open();

  template <typename Control>
  Control* control(const char* name) const {
    return frame->findChild<Control*>(QString::fromLatin1(name));
  }
  QTableView* grid() const { return control<QTableView>("tblEqRec"); }
  QAbstractButton* exitButton() const { return control<QAbstractButton>("BtnExit"); }
  void pressHeading(int column, Qt::MouseButton button = Qt::LeftButton) const;
  /// The cells of a column, joined by blanks.
  QString column(int column) const;
  QList<int> selectedRows() const;

  TtestFolder folder;
  TmessageRecorder messages;
  std::function<void()> onReturn = [] {};
  std::unique_ptr<TEquipmentRecordPluginFrame> frame;
};

/// The two record files' lines of these records, each a control number and a description.
void writeRecords(const std::filesystem::path& folder, const QByteArrayList& controlNums,
                  const QByteArrayList& descriptions);
