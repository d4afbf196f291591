// The method bodies that the value arrays have in common: forwarding only. Each class's source
// file includes it once, after defining
//   ZEL_ARR   the class
//   ZEL_SLOT  its slot type
//   ZEL_IN    how an item comes in: the scalar, or a pointer to const components
//   ZEL_OUT   how an item goes out: a pointer to the scalar or the components
// and, for operations that most but not all arrays have,
//   ZEL_HAS_INITIAL_SIZE, ZEL_HAS_ITEM_POINTER, ZEL_HAS_LAST_INDEX, ZEL_HAS_KEEPING_CLEAR

ZEL_ARR::ZEL_ARR() = default;
ZEL_ARR::ZEL_ARR(int length) : slots_(length) {}
ZEL_ARR::ZEL_ARR(const ZEL_ARR& other) = default;
ZEL_ARR::ZEL_ARR(ZEL_ARR&& other) noexcept = default;
ZEL_ARR& ZEL_ARR::operator=(const ZEL_ARR& other) = default;
ZEL_ARR& ZEL_ARR::operator=(ZEL_ARR&& other) noexcept = default;
ZEL_ARR::~ZEL_ARR() = default;

int ZEL_ARR::AddSizeM(int count) {
  slots_.addSize(count);
  return 1;
}

int ZEL_ARR::SetIncrementM(int increment) {
  slots_.setIncrement(increment);
  return 1;
}

int ZEL_ARR::GetLengthM() const { return slots_.length(); }

int ZEL_ARR::GetBoundM() const { return slots_.bound(); }

int ZEL_ARR::GetAvailableNumM() const { return slots_.available(); }

int ZEL_ARR::GetAvailableNumM(int index) const { return slots_.liveAfter(index); }

zel::RowOf<ZEL_SLOT>* ZEL_ARR::getCurrentItemPrtM() { return zel::rowsOf(slots_.data()); }

const zel::RowOf<ZEL_SLOT>* ZEL_ARR::getCurrentItemPrtConstM() const {
  return zel::rowsOf(slots_.data());
}

int ZEL_ARR::SetItemM(ZEL_IN item, int index) {
  slots_.set(zel::slotOf<ZEL_SLOT>(item), index);
  return 1;
}

int ZEL_ARR::AddItemM(ZEL_IN item) { return slots_.add(zel::slotOf<ZEL_SLOT>(item)); }

int ZEL_ARR::InsertItemM(ZEL_IN item, int position) {
  slots_.insert(zel::slotOf<ZEL_SLOT>(item), position);
  return 1;
}

int ZEL_ARR::GetItemM(ZEL_OUT item, int index) const {
  zel::readSlot(slots_, index, item);
  return 1;
}

int ZEL_ARR::GetFirstM(ZEL_OUT item, int* index) const { return GetNextM(item, index, -1); }

int ZEL_ARR::GetNextM(ZEL_OUT item, int* index, int after) const {
  return zel::handOutFound(slots_, slots_.nextLive(after), item, index) ? 1 : -1;
}

int ZEL_ARR::DelItemM(int index) {
  slots_.remove(index);
  return 1;
}

int ZEL_ARR::DelAllM() {
  slots_.clear();
  return 1;
}

#ifdef ZEL_HAS_INITIAL_SIZE
int ZEL_ARR::InitialSizeM(int length) {
  slots_.reserve(length);
  return 1;
}
#undef ZEL_HAS_INITIAL_SIZE
#endif

#ifdef ZEL_HAS_ITEM_POINTER
zel::ComponentOf<ZEL_SLOT>* ZEL_ARR::GetItemPM(int index) {
  return zel::componentsOf(slots_.slotAt(index));
}

const zel::ComponentOf<ZEL_SLOT>* ZEL_ARR::GetItemPM(int index) const {
  return zel::componentsOf(slots_.slotAt(index));
}
#undef ZEL_HAS_ITEM_POINTER
#endif

#ifdef ZEL_HAS_LAST_INDEX
int ZEL_ARR::GetLastM(ZEL_OUT item, int* index) const {
  const int last = slots_.previousLive(slots_.bound());
  zel::handOutFound(slots_, last, item, index);
  return last;
}
#undef ZEL_HAS_LAST_INDEX
#endif

#ifdef ZEL_HAS_KEEPING_CLEAR
int ZEL_ARR::DelAllVirtualM() {
  slots_.clearKeepingStore();
  return 1;
}
#undef ZEL_HAS_KEEPING_CLEAR
#endif

#undef ZEL_ARR
#undef ZEL_SLOT
#undef ZEL_IN
#undef ZEL_OUT
