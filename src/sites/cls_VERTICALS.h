#pragma once
// The verticals of a site in the user's order, addressed from 1. The order lives only in the
// site file; folder names never change when the order does.
//
// Items are held by pointer, so a vertical handed out (the active one) stays where it is while
// the collection is reordered or grows.

#include <memory>
#include <vector>

#include "dmt/DMTOptions.h"
#include "frame/Diagnostic.h"
#include "sites/cls_VERTICAL.h"

namespace koru {

class cls_VERTICALS {
 public:
  int Count() const { return static_cast<int>(items_.size()); }
  // The vertical at a 1-based index; nullptr outside 1..Count.
  cls_VERTICAL* item(int index);
  const cls_VERTICAL* item(int index) const;

  // Appends one and gives it back.
  cls_VERTICAL& load(cls_VERTICAL vertical);
  // Takes the item out of the collection; its files stay as they are.
  bool unLoad(int index);
  // Deletes the vertical's folder with everything it holds and takes the item out. Only a folder
  // named like the vertical (VERT_m) is ever deleted. The folder is first renamed aside (see
  // FS::removingName), so that it is either whole under its name or gone from it: if that fails
  // the item stays and nothing changed. A missing folder is no error. If what was renamed aside
  // cannot be deleted in full, it is left for cleaning (false, with why) and the item goes all
  // the same. The site file is the caller's: cls_SITE::removeVertical takes the vertical out of
  // it first.
  bool Remove(int index, Diagnostic* why = nullptr);
  // Empties the collection; no file is touched.
  void Clear();

  // Loads the tests of the vertical at the index, evaluates its DMT test and makes it the
  // active one. nullptr for an index outside 1..Count. Problems of its files are in the
  // vertical's problems(); they never stop the activation.
  cls_VERTICAL* activate(int index, const DMTOptions& options);
  // The active vertical's index (0: none) and the vertical itself.
  int activeIndex() const;
  cls_VERTICAL* activeVertical() const { return active_; }
  void setAllInactive() { active_ = nullptr; }

  // Rebuilds the collection in the given order of 1-based indices. A list of another length, or
  // one that is not a permutation of 1..Count, changes nothing and gives false.
  bool reOrder(const std::vector<int>& order);
  // Replaces the item at the index. If that item was the active one, the new one takes its place.
  bool overWriteVertical(int index, cls_VERTICAL vertical);

  // Iteration in order (NewEnum).
  class const_iterator {
   public:
    using Inner = std::vector<std::unique_ptr<cls_VERTICAL>>::const_iterator;
    explicit const_iterator(Inner it) : it_(it) {}
    cls_VERTICAL& operator*() const { return **it_; }
    cls_VERTICAL* operator->() const { return it_->get(); }
    const_iterator& operator++() {
      ++it_;
      return *this;
    }
    bool operator==(const const_iterator& other) const = default;

   private:
    Inner it_;
  };
  const_iterator begin() const { return const_iterator(items_.begin()); }
  const_iterator end() const { return const_iterator(items_.end()); }

 private:
  bool valid(int index) const { return index >= 1 && index <= Count(); }

  std::vector<std::unique_ptr<cls_VERTICAL>> items_;
  cls_VERTICAL* active_ = nullptr;
};

}  // namespace koru
