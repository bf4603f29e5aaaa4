// The chosen items: any number of files and folders, from any folders and drives. They replace the
// one folder with a file specification.
#pragma once

#include "report/run/Run.h"

#include <string>
#include <vector>

/// Whether items are chosen; folder and file specification are then empty.
bool ItemsAreChosen();
/// Takes what of the paths can be purged where it is, each once, and tells of the rest. False when
/// nothing is left; what was chosen before then stays.
/// Of the folders among them only the files of this file specification are meant.
bool ChooseItems(const std::vector<std::string>& paths, const std::string& strFiles = "*.*");
void ForgetChosenItems();
/// "7 chosen items (5 files, 2 folders)"
std::string ChosenItemsText();
/// One path per line, at most `lngMost`; then the number of the remaining ones.
std::string ChosenItemsList(std::size_t lngMost);
bool FoldersAreChosen();
/// The items for a run: the files of one folder form one item, and nothing occurs twice. Folders
/// include everything below them when `blnSubfolders`.
std::vector<RunItem> ChosenRunItems(bool blnSubfolders);
