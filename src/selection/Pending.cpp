// Provisional definitions, replaced one by one by the modules of this room.
#include "selection/Selection.h"
std::string BrowseFolder(const std::string&) {
    return {};
}
std::string AskFileSpecification(const std::string&) {
    return {};
}
std::string SelectSubfolders(const std::string&, const std::string&) {
    return {};
}
char ChooseDrive(const std::string&, const std::string&) {
    return 0;
}
