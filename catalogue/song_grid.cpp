#include "catalogue/song_grid.h"

#include "platform/runtime_error.h"
#include "platform/vb.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace zor {
namespace {

RuntimeError InvalidRow() { return {30009, QStringLiteral("Invalid Row value")}; }
RuntimeError InvalidCol() { return {30010, QStringLiteral("Invalid Col value")}; }

// A cell classed once per sort: empty, number, or text. Ordering across the
// classes is fixed, so the comparison is a strict weak order for any input.
struct SortKey {
    int kind;  // 0 empty, 1 number, 2 text
    double number;
    // The first eight folded UTF-16 units, the first in the highest bits:
    // most pairs of titles differ there, and two integers compare fast.
    std::array<uint64_t, 2> prefix;
    // The whole folded text, in the sort's one buffer of folded texts.
    size_t offset;
    size_t length;
};

std::array<uint64_t, 2> PrefixOf(std::u16string_view folded) {
    std::array<uint64_t, 2> p{};
    for (size_t i = 0; i < 8; ++i) p[i / 4] = (p[i / 4] << 16) | (i < folded.size() ? folded[i] : 0);
    return p;
}

// Appends the text folded for comparing without regard to case.
// QString::toCaseFolded walks the Unicode tables for every character; song
// texts are mostly ASCII, which folds by arithmetic. Same result either way.
void AppendFolded(QStringView text, std::u16string& out) {
    const size_t at = out.size();
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c < 0x80) {
            out += char16_t(c - u'A') < 26u ? char16_t(c + 32) : c;
        } else if (ch.isSurrogate()) {
            out.resize(at);
            const QString folded = text.toString().toCaseFolded();
            out.append(reinterpret_cast<const char16_t*>(folded.constData()), size_t(folded.size()));
            return;
        } else {
            out += char16_t(QChar::toCaseFolded(char32_t(c)));
        }
    }
}

SortKey MakeKey(QStringView cell, std::u16string& folded) {
    if (cell.isEmpty()) return {0, 0, {}, 0, 0};
    if (vb::IsNumeric(cell)) {
        const double v = vb::NumericValue(cell);
        if (!std::isnan(v)) return {1, v, {}, 0, 0};
    }
    const size_t at = folded.size();
    AppendFolded(cell, folded);
    const size_t length = folded.size() - at;
    return {2, 0, PrefixOf(std::u16string_view(folded).substr(at, length)), at, length};
}

int CompareKeys(const SortKey& a, const SortKey& b, std::u16string_view folded) {
    if (a.kind != b.kind) return a.kind < b.kind ? -1 : 1;
    if (a.kind == 1) return a.number < b.number ? -1 : (b.number < a.number ? 1 : 0);
    if (a.kind == 2) {
        // A zero-padded prefix orders as the whole text does up to its
        // eighth unit, so only ties need the full comparison.
        for (int i = 0; i < 2; ++i)
            if (a.prefix[i] != b.prefix[i]) return a.prefix[i] < b.prefix[i] ? -1 : 1;
        return folded.substr(a.offset, a.length).compare(folded.substr(b.offset, b.length));
    }
    return 0;
}

}  // namespace

SongGrid::SongGrid() : rows_(1), colWidth_(kDefaultColumnWidths) {}

void SongGrid::Notify(Change change, int r, int c) {
    if (!redraw_ || !visible_) {
        (change == Change::Selection ? pendingSelection_ : pendingReset_) = true;
        return;
    }
    if (changed) changed(change, r, c);
}

void SongGrid::FlushPending() {
    if (!redraw_ || !visible_) return;
    const Change change = pendingReset_ ? Change::Reset : Change::Selection;
    const bool due = pendingReset_ || pendingSelection_;
    pendingReset_ = pendingSelection_ = false;
    if (due) Notify(change, -1, -1);
}

void SongGrid::CheckRow(int r) const {
    if (r < 0 || r >= Rows()) throw InvalidRow();
}

void SongGrid::CheckCol(int c) const {
    if (c < 0 || c >= kGridCols) throw InvalidCol();
}

void SongGrid::SetRows(int n) {
    if (n < 0) throw InvalidRow();
    rows_.resize(std::max(n, 0));
    const int last = std::max(Rows() - 1, 0);
    row_ = std::min(row_, last);
    rowSel_ = std::min(rowSel_, last);
    topRow_ = std::clamp(topRow_, 1, std::max(last, 1));
    Notify(Change::Reset, -1, -1);
}

void SongGrid::SetRow(int r) {
    CheckRow(r);
    row_ = rowSel_ = r;
    colSel_ = col_;
    Notify(Change::Selection, -1, -1);
}

void SongGrid::SetCol(int c) {
    CheckCol(c);
    col_ = colSel_ = c;
    rowSel_ = row_;
    Notify(Change::Selection, -1, -1);
}

void SongGrid::SetRowSel(int r) {
    CheckRow(r);
    rowSel_ = r;
    Notify(Change::Selection, -1, -1);
}

void SongGrid::SetColSel(int c) {
    CheckCol(c);
    colSel_ = c;
    Notify(Change::Selection, -1, -1);
}

void SongGrid::Select(int row1, int col1, int row2, int col2) {
    CheckRow(row1);
    CheckRow(row2);
    CheckCol(col1);
    CheckCol(col2);
    row_ = row1;
    col_ = col1;
    rowSel_ = row2;
    colSel_ = col2;
    Notify(Change::Selection, -1, -1);
}

void SongGrid::SetTopRow(int r) {
    topRow_ = std::clamp(r, 1, std::max(Rows() - 1, 1));
    Notify(Change::Selection, -1, -1);
}

void SongGrid::PressCell(int r, int c) {
    CheckRow(r);
    CheckCol(c);
    const int last = Rows() - 1;
    if (r == 0 && last < 1) return;
    pressRow_ = r;
    pressCol_ = c;
    if (r == 0 && c == 0) {
        Select(1, 1, last, kGridCols - 1);
        SetTopRow(1);
    } else if (r == 0) {
        Select(1, c, last, c);
    } else if (c == 0) {
        Select(r, 1, r, kGridCols - 1);
    } else {
        Select(r, c, r, c);
    }
}

void SongGrid::DragTo(int r, int c) {
    const int last = Rows() - 1;
    if (last < 1 || (pressRow_ == 0 && pressCol_ == 0)) return;
    r = pressRow_ == 0 ? last : std::clamp(r, 1, last);
    c = pressCol_ == 0 ? kGridCols - 1 : std::clamp(c, 1, kGridCols - 1);
    Select(row_, col_, r, c);
}

void SongGrid::CheckCell(int r, int c) const {
    if (r < 0 || r >= Rows() || c < 0 || c >= kGridCols) throw RuntimeError(381, QStringLiteral("Subscript out of range"));
}

QString SongGrid::TextMatrix(int r, int c) const {
    CheckCell(r, c);
    return rows_[r][c].toString();
}

void SongGrid::SetTextMatrix(int r, int c, const QString& text) {
    CheckCell(r, c);
    rows_[r].Set(c, text);
    Notify(Change::Cell, r, c);
}

void SongGrid::SetAllRows(std::vector<GridRow>&& rows) {
    rows_ = std::move(rows);
    if (rows_.empty()) rows_.resize(1);
    SetRows(Rows());
}

void SongGrid::AppendRows(std::vector<GridRow>&& rows) {
    rows_.reserve(rows_.size() + rows.size());
    std::move(rows.begin(), rows.end(), std::back_inserter(rows_));
    Notify(Change::Reset, -1, -1);
}

void SongGrid::Sort(int order) {
    if (order != 1 && order != 2) return;
    int first = std::min(row_, rowSel_);
    int last = std::max(row_, rowSel_);
    if (row_ == rowSel_) {
        first = 1;
        last = Rows() - 1;
    }
    first = std::max(first, 1);
    if (last <= first) return;
    const int c1 = std::min(col_, colSel_);
    const int c2 = std::max(col_, colSel_);
    const int keyCount = c2 - c1 + 1;
    const size_t n = size_t(last - first + 1);

    std::vector<SortKey> keys(n * keyCount);
    std::u16string buffer;
    for (size_t i = 0; i < n; ++i)
        for (int k = 0; k < keyCount; ++k) keys[i * keyCount + k] = MakeKey(rows_[first + i][c1 + k], buffer);
    const std::u16string_view folded = buffer;

    std::vector<size_t> order_(n);
    std::iota(order_.begin(), order_.end(), 0);
    const bool descending = order == 2;
    std::stable_sort(order_.begin(), order_.end(), [&](size_t a, size_t b) {
        for (int k = 0; k < keyCount; ++k) {
            const int c = CompareKeys(keys[a * keyCount + k], keys[b * keyCount + k], folded);
            if (c != 0) return descending ? c > 0 : c < 0;
        }
        return false;
    });

    std::vector<GridRow> sorted;
    sorted.reserve(n);
    for (size_t i : order_) sorted.push_back(std::move(rows_[first + i]));
    std::move(sorted.begin(), sorted.end(), rows_.begin() + first);
    Notify(Change::Reset, -1, -1);
}

void SongGrid::Clear() {
    std::fill(rows_.begin(), rows_.end(), GridRow());
    Notify(Change::Reset, -1, -1);
}

void SongGrid::SetRedraw(bool on) {
    redraw_ = on;
    FlushPending();
}

void SongGrid::SetVisible(bool on) {
    visible_ = on;
    if (changed) changed(Change::Appearance, -1, -1);
    FlushPending();
}

void SongGrid::SetColWidth(int c, int twips) {
    CheckCol(c);
    colWidth_[c] = std::max(twips, 0);
    Notify(Change::Appearance, -1, -1);
}

}  // namespace zor
