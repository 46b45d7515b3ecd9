// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <optional>
#include <string>

#include "stockbook/import/import_preview.h"
#include "stockbook/window/import_fields.h"

class QGridLayout;

namespace stockbook::app {

// An inventory that was made of a table.
struct ImportedInventory {
  std::string file;
  QString message;  // how much was imported and skipped
};

// Sets up the import of a table: how its text is read, which column means what, by guess and to be corrected, what its
// lines look like then and which ones would be skipped, and why. It writes nothing before the user has named the new
// inventory. What is wrong stands in the dialog itself, which stays open.
class ImportDialog : public QDialog {
  Q_OBJECT

 public:
  explicit ImportDialog(std::string path, QWidget* parent = nullptr);

  // Shows the dialog for the table of the path. Nothing if the user gives up.
  static std::optional<ImportedInventory> Run(QWidget* parent, const std::string& path);

  const ImportPreview& preview() const { return preview_; }
  // Imports into the file and closes the dialog; returns false, and says why, if nothing was written.
  bool ImportInto(const std::string& file);
  const std::optional<ImportedInventory>& imported() const { return imported_; }

 private:
  void BuildSettings(QGridLayout* grid);
  void BuildRows(QGridLayout* settings);
  TableOptions Options() const;
  Direction ChosenDirection() const;
  // Reads the table anew; the columns are guessed again where it is read in another way.
  void TakeTable();
  void TakeFields();
  void Refresh(std::optional<ImportMapping::Positions> mapping);
  void ShowLines();
  void FitLines();
  void ShowSummary();
  void ShowSheets();
  void ShowProblem(const QString& problem);
  void ChooseFile();

  std::string path_;
  ImportPreview preview_;
  std::optional<ImportedInventory> imported_;
  QComboBox* encoding_;
  QComboBox* delimiter_;
  QComboBox* sheet_;
  QLabel* sheet_label_ = nullptr;
  QComboBox* decimal_;
  QComboBox* direction_;
  ImportFields* fields_;
  QTableWidget* lines_;
  QCheckBox* only_skipped_;
  QLabel* summary_;
  QLabel* problem_;
  QPushButton* import_;
};

}  // namespace stockbook::app
