#pragma once
// What the user does to the rows of the catalogue grid: clicks, marks for a
// playlist, sorts, and removal of records and song files.
namespace zor {

class Form1;

// The mouse buttons as the grid's MouseDown reports them.
enum GridButton : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

void ClickGrid(Form1& f);                      // the left button in MFGrid1
void GridMouseDown(Form1& f, int button);      // every press in MFGrid1
void NumberSelectedRows(Form1& f);             // Mark1, and the right button
void ClearSelectionNumbers(Form1& f);          // CleSel1, and the middle button

void SortSelection(Form1& f, int order);       // Sorter1 (1), Sorter2 (2)
void DoubleSort(Form1& f, int column);         // Sorter3..Sorter6
void DeleteRecord(Form1& f);                   // DelRec1
void DeleteSelectedRecords(Form1& f);          // DelRec2
void DeleteSongFile(Form1& f);                 // DelFile1

// Moves Data1 to the table row that a row of MFGrid1 shows, found by its
// record number (column 11, counted from 1).
void GoToRecordOfRow(Form1& f, int row);

}  // namespace zor
