// The family operations of one list: forwarding only. Before including, define ZEL_LIST (the list
// class), ZEL_ELEMENT (its element class) and ZEL_SLOTS (its IndexedSlots member).

ZEL_LIST::ZEL_LIST() = default;
ZEL_LIST::ZEL_LIST(int length) : ZEL_SLOTS(length) {}
ZEL_LIST::ZEL_LIST(const ZEL_LIST& other) = default;
ZEL_LIST::ZEL_LIST(ZEL_LIST&& other) noexcept = default;
ZEL_LIST& ZEL_LIST::operator=(const ZEL_LIST& other) = default;
ZEL_LIST& ZEL_LIST::operator=(ZEL_LIST&& other) noexcept = default;
ZEL_LIST::~ZEL_LIST() = default;

int ZEL_LIST::GetLengthM() const { return ZEL_SLOTS.length(); }
int ZEL_LIST::GetBoundM() const { return ZEL_SLOTS.store().bound(); }
int ZEL_LIST::GetAvailableNumM() const { return ZEL_SLOTS.store().available(); }
int ZEL_LIST::GetAvailableNumM(int index) const { return ZEL_SLOTS.store().liveAfter(index); }

int ZEL_LIST::AddSizeM(int count) {
  ZEL_SLOTS.addSize(count);
  return 1;
}

int ZEL_LIST::InitialSizeM(int length) {
  ZEL_SLOTS.reserve(length);
  return 1;
}

int ZEL_LIST::SetIncrementM(int increment) {
  ZEL_SLOTS.setIncrement(increment);
  return 1;
}

int ZEL_LIST::SetItemM(const ZEL_ELEMENT& element, int index) {
  ZEL_SLOTS.set(element, index);
  return 1;
}

int ZEL_LIST::AddItemM(const ZEL_ELEMENT& element) { return ZEL_SLOTS.add(element); }

int ZEL_LIST::InsertItemM(const ZEL_ELEMENT& element, int position) {
  ZEL_SLOTS.insert(element, position);
  return 1;
}

int ZEL_LIST::DelItemM(int index) {
  ZEL_SLOTS.remove(index);
  return 1;
}

int ZEL_LIST::DelAllM() {
  ZEL_SLOTS.clear();
  return 1;
}

int ZEL_LIST::DelAllVirtualM() {
  ZEL_SLOTS.clearKeepingStore();
  return 1;
}

int ZEL_LIST::GetItemM(ZEL_ELEMENT* element, int index) const {
  ZEL_SLOTS.read(element, index);
  return 1;
}

ZEL_ELEMENT* ZEL_LIST::GetItemPM(int index) { return ZEL_SLOTS.handOut(index); }
const ZEL_ELEMENT* ZEL_LIST::GetItemPM(int index) const { return ZEL_SLOTS.store().slotAt(index); }
ZEL_ELEMENT& ZEL_LIST::ElementAtM(int index) { return ZEL_SLOTS.handOutAt(index); }
const ZEL_ELEMENT& ZEL_LIST::ElementAtM(int index) const { return ZEL_SLOTS.at(index); }
ZEL_ELEMENT& ZEL_LIST::operator[](int index) { return ZEL_SLOTS.handOutAt(index); }
const ZEL_ELEMENT& ZEL_LIST::operator[](int index) const { return ZEL_SLOTS.at(index); }

int ZEL_LIST::GetFirstM(ZEL_ELEMENT* element, int* index) const {
  return ZEL_SLOTS.next(element, index, -1);
}

int ZEL_LIST::GetNextM(ZEL_ELEMENT* element, int* index, int after) const {
  return ZEL_SLOTS.next(element, index, after);
}

int ZEL_LIST::GetLastM(ZEL_ELEMENT* element, int* index) const {
  return ZEL_SLOTS.last(element, index);
}

ZEL_ELEMENT* ZEL_LIST::getCurrentItemPrtM() { return ZEL_SLOTS.handOutAll(); }
const ZEL_ELEMENT* ZEL_LIST::getCurrentItemPrtConstM() const { return ZEL_SLOTS.data(); }

#undef ZEL_LIST
#undef ZEL_ELEMENT
#undef ZEL_SLOTS
