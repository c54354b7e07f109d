#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <vector>

/// One entry of an upload image.
struct TuploadedRecord {
  QByteArray deviceId;  ///< as it came, without the blanks that pad it
  int procedure = 0;
};

/// An upload image read back.
struct TdecodedImage {
  std::vector<TuploadedRecord> records;
  QByteArrayList errors;  ///< what does not hold, at most 10; empty for a right image
};

/// Reads an image of whole entries: records, and behind the last one nothing but filler.
TdecodedImage decodeImage(const QByteArray& image);

/// "record NUMBER: DEVICE ID, procedure N"; a byte that would break the line shows as "\xNN".
QByteArray describe(const TuploadedRecord& record, qsizetype number);
