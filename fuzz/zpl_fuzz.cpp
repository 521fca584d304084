// A .zpl playlist as any bytes: every whole record goes into a grid row as
// the open does, and from the row back into the record buffer as the save
// does. Nothing may crash, and each record must write back as the bytes it
// came from, its reserved fields carried by the buffer.
#include "fuzz/fuzz_support.h"
#include "catalogue/grid_row.h"
#include "playlists/zpl_record.h"

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace zor::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zor;
    const QByteArray bytes = Input(data, size);
    const qint64 records = ZplRecordCount(bytes.size());
    Require(records * kZplRecordBytes <= bytes.size(), "more records than bytes");
    ZplRecord record;
    GridRow row;  // one row written over again and again, as MFgrid2's rows are
    for (qint64 i = 0; i < records; ++i) {
        const QByteArrayView read = QByteArrayView(bytes).sliced(i * kZplRecordBytes, kZplRecordBytes);
        record.Load(read);
        record.ToRow(row, i + 1);
        Require(row[0] == QString::number(i + 1) && row[12] == row[0], "the row's number is wrong");
        for (const ZplField& f : kZplFields) Require(row[f.column].size() == f.width, "a cell is not its field's width");
        ZplRecord written;
        written.Load(read);
        written.Fill(row);
        Require(written.Bytes() == read, "a record does not write back as the bytes it came from");
    }
    // A short tail still loads without reading past it.
    if (size % kZplRecordBytes) record.Load(QByteArrayView(bytes).sliced(records * kZplRecordBytes));
    Require(record.Bytes().size() == kZplRecordBytes, "the buffer changed its size");
    return 0;
}
