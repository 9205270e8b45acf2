#include "sites/cls_VERTICALS.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "frame/Log.h"
#include "sites/FS.h"

namespace koru {

namespace fs = std::filesystem;

cls_VERTICAL* cls_VERTICALS::item(int index) { return valid(index) ? items_[index - 1].get() : nullptr; }

const cls_VERTICAL* cls_VERTICALS::item(int index) const {
  return valid(index) ? items_[index - 1].get() : nullptr;
}

cls_VERTICAL& cls_VERTICALS::load(cls_VERTICAL vertical) {
  items_.push_back(std::make_unique<cls_VERTICAL>(std::move(vertical)));
  return *items_.back();
}

bool cls_VERTICALS::unLoad(int index) {
  if (!valid(index)) return false;
  if (active_ == items_[index - 1].get()) active_ = nullptr;
  items_.erase(items_.begin() + (index - 1));
  return true;
}

bool cls_VERTICALS::Remove(int index, Diagnostic* why) {
  if (!valid(index)) return false;
  const cls_VERTICAL& vertical = *items_[index - 1];
  // The folder path is built from the name, but a vertical can be edited by hand: only a path
  // that still ends in a proper VERT_m name is deleted, so a damaged item can never take a
  // site or the whole store with it.
  const bool ownFolder = FS::folderNumber(vertical.strFolderName, FS::kVerticalPrefix).has_value() &&
                         vertical.strFolderPath.filename() == vertical.strFolderName;
  if (!ownFolder) {
    if (why) *why = {vertical.strFolderPath, 0, "not a vertical's folder: nothing deleted"};
    return false;
  }
  const fs::path aside = vertical.strFolderPath.parent_path() / FS::removingName(vertical.strFolderName);
  // A leftover of an earlier removal of the same name would stop the rename.
  if (!FS::deleteFolder(aside, why)) return false;
  std::error_code ec;
  fs::rename(vertical.strFolderPath, aside, ec);
  if (ec && ec != std::errc::no_such_file_or_directory) {
    if (why) *why = {vertical.strFolderPath, 0, "cannot remove the folder: " + ec.message()};
    return false;
  }
  const bool deleted = ec || FS::deleteFolder(aside, why);
  unLoad(index);
  return deleted;
}

void cls_VERTICALS::Clear() {
  items_.clear();
  active_ = nullptr;
}

cls_VERTICAL* cls_VERTICALS::activate(int index, const DMTOptions& options) {
  cls_VERTICAL* vertical = item(index);
  if (!vertical) return nullptr;
  vertical->loadData(options);
  active_ = vertical;
  return vertical;
}

int cls_VERTICALS::activeIndex() const {
  for (size_t i = 0; i < items_.size(); ++i)
    if (items_[i].get() == active_ && active_) return static_cast<int>(i) + 1;
  return 0;
}

bool cls_VERTICALS::reOrder(const std::vector<int>& order) {
  if (order.size() != items_.size()) {
    logLine("Reorder sequence has more or less items than verticals collection.");
    return false;
  }
  std::vector<bool> taken(items_.size(), false);
  for (int index : order) {
    if (!valid(index) || taken[index - 1]) {
      logLine("Reorder sequence is not a permutation of the verticals collection.");
      return false;
    }
    taken[index - 1] = true;
  }
  std::vector<std::unique_ptr<cls_VERTICAL>> rebuilt;
  rebuilt.reserve(items_.size());
  for (int index : order) rebuilt.push_back(std::move(items_[index - 1]));
  items_ = std::move(rebuilt);
  return true;
}

bool cls_VERTICALS::overWriteVertical(int index, cls_VERTICAL vertical) {
  if (!valid(index)) return false;
  auto& slot = items_[index - 1];
  const bool wasActive = active_ == slot.get();
  slot = std::make_unique<cls_VERTICAL>(std::move(vertical));
  if (wasActive) active_ = slot.get();
  return true;
}

}  // namespace koru
