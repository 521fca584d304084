#include "playlists/zpl_record.h"

#include "platform/cp1252.h"

#include <algorithm>

namespace zor {

void ZplRecord::Load(QByteArrayView record) {
    const qsizetype n = std::min<qsizetype>(record.size(), kZplRecordBytes);
    std::copy_n(record.data(), n, bytes_.data());
}

void ZplRecord::Fill(const GridRow& row) {
    for (const ZplField& f : kZplFields) {
        const QByteArray field = cp1252::Field(row[f.column].toString(), f.width);
        std::copy_n(field.constData(), f.width, bytes_.data() + f.offset);
    }
}

void ZplRecord::ToRow(GridRow& row, qint64 number) const {
    const QString text = cp1252::Decode(bytes_.first(kZplSongBytes));
    const QString mark = QString::number(number);
    // Cells in column order: on a new row each lands at the end of its text.
    std::array<QStringView, kGridCols> cells{};
    cells[0] = mark;
    for (const ZplField& f : kZplFields) cells[size_t(f.column)] = QStringView(text).sliced(f.offset, f.width);
    cells[12] = mark;
    for (int c = 0; c < kGridCols; ++c)
        if (c != 11) row.Set(c, cells[size_t(c)]);
}

}  // namespace zor
