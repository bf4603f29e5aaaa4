// The chosen items: files and folders in any number, from any folders and drives, instead of one
// folder with a file specification.
#pragma once

#include "report/run/Run.h"

#include <string>
#include <vector>

/// Whether items are chosen; folder and file specification are empty then.
bool ItemsAreChosen();
/// Takes what of the paths can be purged where it is, each once, and tells of the rest. False when
/// nothing is left; what was chosen before then stays.
/// Of the folders among them only the files of this specification are meant.
bool ChooseItems(const std::vector<std::string>& paths, const std::string& strFiles = "*.*");
void ForgetChosenItems();
/// "7 chosen items (5 files, 2 folders)"
std::string ChosenItemsText();
/// One path a line, at most so many; then how many more there are.
std::string ChosenItemsList(std::size_t lngMost);
bool FoldersAreChosen();
/// What a run works on: files of one folder together, and nothing that lies in another item.
/// Folders bring what lies below them when `blnSubfolders`.
std::vector<RunItem> ChosenRunItems(bool blnSubfolders);
