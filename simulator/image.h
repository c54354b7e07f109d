#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <vector>

/// One entry of an upload image.
struct TuploadedRecord {
  QByteArray deviceId;  ///< as received, without the padding blanks
  int procedure = 0;
};

/// A decoded upload image.
struct TdecodedImage {
  std::vector<TuploadedRecord> records;
  QByteArrayList errors;  ///< at most 10; empty for a correct image
};

/// Decodes an image of whole entries: records, then nothing but filler.
TdecodedImage decodeImage(const QByteArray& image);

/// "record NUMBER: DEVICE ID, procedure N"; control characters appear as "\xNN".
QByteArray describe(const TuploadedRecord& record, qsizetype number);
