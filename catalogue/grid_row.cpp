#include "catalogue/grid_row.h"

#include "platform/runtime_error.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace zor {
namespace {

RuntimeError OutOfMemory() { return {7, QStringLiteral("Out of memory")}; }

// Whether all bytes are below 0x80, eight at a time.
bool IsAscii(QByteArrayView bytes) {
    const char* p = bytes.data();
    qsizetype n = bytes.size();
    uint64_t bits = 0;
    for (; n >= 8; p += 8, n -= 8) {
        uint64_t word;
        std::memcpy(&word, p, 8);
        bits |= word;
    }
    for (; n > 0; ++p, --n) bits |= static_cast<unsigned char>(*p);
    return (bits & 0x8080808080808080ull) == 0;
}

bool PointsInto(QStringView text, const QString& s) {
    const auto p = reinterpret_cast<uintptr_t>(text.data());
    const auto begin = reinterpret_cast<uintptr_t>(s.constData());
    return p >= begin && p < begin + uintptr_t(s.size()) * sizeof(QChar);
}

}  // namespace

GridRow::GridRow(const GridRow& other) : text_(other.Cells().toString()), end_(other.end_) {}

GridRow& GridRow::operator=(const GridRow& other) {
    if (this != &other) *this = GridRow(other);
    return *this;
}

void GridRow::Set(int c, QStringView text) {
    // Clearing cells that are empty already, as a walk over the marks does,
    // leaves a shared row shared.
    if (text == (*this)[c]) return;
    const int start = Start(c);
    const int old = end_[c] - start;
    if (text.size() - old > std::numeric_limits<int>::max() - end_.back()) throw OutOfMemory();
    // A text taken from this row's own string must be copied before the
    // string changes or is let go.
    if (PointsInto(text, text_)) {
        Set(c, QStringView(text.toString()));
        return;
    }
    if (!OwnsText()) {
        text_ = Cells().toString();
        base_ = 0;
    }
    const int delta = int(text.size()) - old;
    text_.replace(start, old, text.data(), text.size());
    for (int k = c; k < kGridCols; ++k) end_[k] += delta;
}

void GridRowBuilder::AddRow() {
    CloseRow();
    GridRow& row = rows_.emplace_back();
    row.base_ = block_.size();
    filling_ = true;
}

// Cells right of the last one set end where it ends.
void GridRowBuilder::CloseRow() {
    if (!filling_) return;
    GridRow& row = rows_.back();
    const int end = lastCol_ < 0 ? 0 : row.end_[lastCol_];
    for (int k = lastCol_ + 1; k < kGridCols; ++k) row.end_[k] = end;
    filling_ = false;
    lastCol_ = -1;
}

void GridRowBuilder::SetUtf8(int c, QByteArrayView utf8) {
    GridRow& row = rows_.back();
    if (utf8.isEmpty()) return;
    // UTF-8 never takes fewer bytes than UTF-16 takes units.
    if (block_.size() + utf8.size() > block_.capacity()) StartBlock(utf8.size());
    // Plain ASCII, which most of a catalogue is, widens without a decoder.
    if (IsAscii(utf8)) block_.append(QLatin1StringView(utf8.data(), utf8.size()));
    else block_.append(QString::fromUtf8(utf8));
    const qsizetype end = block_.size() - row.base_;
    if (end > std::numeric_limits<int>::max()) throw OutOfMemory();
    const int before = lastCol_ < 0 ? 0 : row.end_[lastCol_];
    for (int k = lastCol_ + 1; k < c; ++k) row.end_[k] = before;
    row.end_[c] = int(end);
    lastCol_ = c;
}

// A full block is handed to its rows and never grown: growing it would copy
// it. The row being filled moves on to the new block.
void GridRowBuilder::StartBlock(qsizetype more) {
    GridRow& row = rows_.back();
    const QString begun = QStringView(block_).sliced(row.base_).toString();
    HandOver(rows_.size() - 1);
    block_ = QString();
    block_.reserve(std::max(kBlockChars, begun.size() + more));
    block_.append(begun);
    row.base_ = 0;
}

void GridRowBuilder::HandOver(size_t end) {
    for (size_t r = blockFirst_; r < end; ++r) rows_[r].text_ = block_;
    blockFirst_ = end;
}

void GridRowBuilder::Finish() {
    CloseRow();
    HandOver(rows_.size());
    block_ = QString();
}

}  // namespace zor
