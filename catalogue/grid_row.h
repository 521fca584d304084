#pragma once
// One row of the song grid. Its 13 cells sit end to end in one string, with
// the end of each cell kept beside it. Rows read together from a catalogue
// share one block of text (see GridRowBuilder): opening 100,000 songs then
// costs a handful of allocations instead of most of a million, which was most
// of what the open cost beyond reading the file. A row leaves the shared
// block for a string of its own when one of its cells is set, or when it is
// copied, so a copy never keeps a whole catalogue's text alive.
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <array>
#include <vector>

namespace zor {

inline constexpr int kGridCols = 13;
// The song file's path, the cell every file operation on a row starts from.
inline constexpr int kPathColumn = 6;

class GridRow {
public:
    GridRow() = default;
    GridRow(const GridRow& other);
    GridRow& operator=(const GridRow& other);
    GridRow(GridRow&&) noexcept = default;
    GridRow& operator=(GridRow&&) noexcept = default;

    // The cell's text, valid until the row changes.
    // Const, so that a cell can't be "assigned" through the view by mistake.
    const QStringView operator[](int c) const { return QStringView(text_).sliced(base_ + Start(c), end_[c] - Start(c)); }
    void Set(int c, QStringView text);

private:
    friend class GridRowBuilder;
    int Start(int c) const { return c == 0 ? 0 : end_[c - 1]; }
    QStringView Cells() const { return QStringView(text_).sliced(base_, end_.back()); }
    bool OwnsText() const { return base_ == 0 && text_.size() == end_.back(); }

    QString text_;
    qsizetype base_ = 0;  // where the row starts in text_
    std::array<int, kGridCols> end_{};
};

// Appends rows to a vector, their cells filled from left to right, their
// texts in blocks that the rows share once Finish is called.
class GridRowBuilder {
public:
    explicit GridRowBuilder(std::vector<GridRow>& rows) : rows_(rows), blockFirst_(rows.size()) {}
    void AddRow();
    // A cell of the row added last, given in UTF-8, to the right of the
    // cells set before it.
    void SetUtf8(int c, QByteArrayView utf8);
    // Hands the block to the rows added.
    void Finish();

private:
    // Blocks of a fixed size, filled in turn: a block is never grown, which
    // would copy it.
    static constexpr qsizetype kBlockChars = 1 << 18;
    void StartBlock(qsizetype more);
    void HandOver(size_t end);
    void CloseRow();

    std::vector<GridRow>& rows_;
    size_t blockFirst_;  // the first row of the current block
    QString block_;
    bool filling_ = false;  // a row has been added and not yet closed
    int lastCol_ = -1;      // the last cell set in it
};

}  // namespace zor
