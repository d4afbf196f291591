// The method bodies that the slot arrays have in common: forwarding only. Each class's source file
// includes it once, after defining
//   ZEL_ARR   the class
//   ZEL_SLOT  its slot type
//   ZEL_IN    how an item comes in: the scalar, a pointer to const components, or the element
//   ZEL_OUT   how an item goes out: a pointer to the scalar, the components or the element
// if it is not called slots_,
//   ZEL_SLOTS the member that holds the slots
// and, for operations that not all arrays have,
//   ZEL_HAS_INITIAL_SIZE, ZEL_HAS_ITEM_POINTER, ZEL_HAS_LAST_INDEX, ZEL_HAS_KEEPING_CLEAR,
//   ZEL_HAS_ELEMENTS

#ifndef ZEL_SLOTS
#define ZEL_SLOTS slots_
#endif

ZEL_ARR::ZEL_ARR() = default;
ZEL_ARR::ZEL_ARR(int length) : ZEL_SLOTS(length) {}
ZEL_ARR::ZEL_ARR(const ZEL_ARR& other) = default;
ZEL_ARR::ZEL_ARR(ZEL_ARR&& other) noexcept = default;
ZEL_ARR& ZEL_ARR::operator=(const ZEL_ARR& other) = default;
ZEL_ARR& ZEL_ARR::operator=(ZEL_ARR&& other) noexcept = default;
ZEL_ARR::~ZEL_ARR() = default;

int ZEL_ARR::AddSizeM(int count) {
  ZEL_SLOTS.addSize(count);
  return 1;
}

int ZEL_ARR::SetIncrementM(int increment) {
  ZEL_SLOTS.setIncrement(increment);
  return 1;
}

int ZEL_ARR::GetLengthM() const { return ZEL_SLOTS.length(); }

int ZEL_ARR::GetBoundM() const { return ZEL_SLOTS.bound(); }

int ZEL_ARR::GetAvailableNumM() const { return ZEL_SLOTS.available(); }

int ZEL_ARR::GetAvailableNumM(int index) const { return ZEL_SLOTS.liveAfter(index); }

zel::RowOf<ZEL_SLOT>* ZEL_ARR::getCurrentItemPrtM() { return zel::rowsOf(ZEL_SLOTS.data()); }

const zel::RowOf<ZEL_SLOT>* ZEL_ARR::getCurrentItemPrtConstM() const {
  return zel::rowsOf(ZEL_SLOTS.data());
}

int ZEL_ARR::SetItemM(ZEL_IN item, int index) {
  ZEL_SLOTS.set(zel::slotOf<ZEL_SLOT>(item), index);
  return 1;
}

int ZEL_ARR::AddItemM(ZEL_IN item) { return ZEL_SLOTS.add(zel::slotOf<ZEL_SLOT>(item)); }

int ZEL_ARR::InsertItemM(ZEL_IN item, int position) {
  ZEL_SLOTS.insert(zel::slotOf<ZEL_SLOT>(item), position);
  return 1;
}

int ZEL_ARR::GetItemM(ZEL_OUT item, int index) const {
  zel::readSlot(ZEL_SLOTS, index, item);
  return 1;
}

int ZEL_ARR::GetFirstM(ZEL_OUT item, int* index) const { return GetNextM(item, index, -1); }

int ZEL_ARR::GetNextM(ZEL_OUT item, int* index, int after) const {
  return zel::handOutFound(ZEL_SLOTS, ZEL_SLOTS.nextLive(after), item, index) ? 1 : -1;
}

int ZEL_ARR::DelItemM(int index) {
  ZEL_SLOTS.remove(index);
  return 1;
}

int ZEL_ARR::DelAllM() {
  ZEL_SLOTS.clear();
  return 1;
}

#ifdef ZEL_HAS_INITIAL_SIZE
int ZEL_ARR::InitialSizeM(int length) {
  ZEL_SLOTS.reserve(length);
  return 1;
}
#undef ZEL_HAS_INITIAL_SIZE
#endif

#ifdef ZEL_HAS_ITEM_POINTER
zel::ComponentOf<ZEL_SLOT>* ZEL_ARR::GetItemPM(int index) {
  return zel::componentsOf(ZEL_SLOTS.slotAt(index));
}

const zel::ComponentOf<ZEL_SLOT>* ZEL_ARR::GetItemPM(int index) const {
  return zel::componentsOf(ZEL_SLOTS.slotAt(index));
}
#undef ZEL_HAS_ITEM_POINTER
#endif

#ifdef ZEL_HAS_LAST_INDEX
int ZEL_ARR::GetLastM(ZEL_OUT item, int* index) const {
  const int last = ZEL_SLOTS.previousLive(ZEL_SLOTS.bound());
  zel::handOutFound(ZEL_SLOTS, last, item, index);
  return last;
}
#undef ZEL_HAS_LAST_INDEX
#endif

#ifdef ZEL_HAS_KEEPING_CLEAR
int ZEL_ARR::DelAllVirtualM() {
  ZEL_SLOTS.clearKeepingStore();
  return 1;
}
#undef ZEL_HAS_KEEPING_CLEAR
#endif

#ifdef ZEL_HAS_ELEMENTS
ZEL_SLOT& ZEL_ARR::ElementAtM(int index) { return ZEL_SLOTS.handOut(index); }
const ZEL_SLOT& ZEL_ARR::ElementAtM(int index) const { return ZEL_SLOTS.at(index); }
ZEL_SLOT& ZEL_ARR::operator[](int index) { return ZEL_SLOTS.handOut(index); }
const ZEL_SLOT& ZEL_ARR::operator[](int index) const { return ZEL_SLOTS.at(index); }
#undef ZEL_HAS_ELEMENTS
#endif

#undef ZEL_ARR
#undef ZEL_SLOT
#undef ZEL_IN
#undef ZEL_OUT
#undef ZEL_SLOTS
