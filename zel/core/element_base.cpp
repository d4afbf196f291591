#include "zel/core/element_base.h"

#include "zel/core/constants.h"

KwBaseCL::KwBaseCL() : deleteTag_(zel::kTagNotAvailable) {}

KwBaseCL::KwBaseCL(char tag) : deleteTag_(static_cast<signed char>(tag)) {}

KwBaseCL::KwBaseCL(const KwBaseCL& other) = default;

KwBaseCL& KwBaseCL::operator=(const KwBaseCL& other) = default;

KwBaseCL::~KwBaseCL() { deleteTag_ = zel::kTagNotAvailable; }

int KwBaseCL::InitialM() { return 1; }

char KwBaseCL::IsAvailableM() const { return static_cast<char>(deleteTag_); }

void KwBaseCL::SetDeleteTagM(char tag) { deleteTag_ = static_cast<signed char>(tag); }

void KwBaseCL::DelItemM() { deleteTag_ = zel::kTagDeleted; }
