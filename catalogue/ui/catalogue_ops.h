#pragma once
// Operations on the catalogue file as a whole, and the grid layout they call.
namespace zor {

class Form1;

void OpenDatabase(Form1& f);
// Nieuw: an empty window for a new catalogue; the file stays as it is.
void NewCatalogue(Form1& f);
void OpenDatabaseDialog(Form1& f);   // Open1, Command3
void SaveDatabaseAs(Form1& f);       // Save2, Command4
void SaveDatabase(Form1& f);         // Save1
void RefreshDatabase(Form1& f);      // Refresh1
void ClearDatabase(Form1& f);        // the working part of Clear1 and of clearing before import
void ClearDatabaseMenu(Form1& f);    // Clear1
void CompactDatabase(Form1& f);      // Compact1
// Field 10 of every row set to its place in table order, counted from 1.
void RenumberRecords(Form1& f);
// The import's variant: by absolute position, then a refresh of Data1.
void RenumberRecordsByPosition(Form1& f);

// Binds Data1 to MFGrid1: opens the file and fills the grid in table order.
// Returns false when the engine refused the file.
bool RefreshData1(Form1& f);

void LayOutGrids(Form1& f);
void SetGridHeadings(Form1& f);

}  // namespace zor
