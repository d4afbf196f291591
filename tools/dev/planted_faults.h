// Included before everything in the build of `./dev mutants`: each planted fault asks here whether
// it is the one that the environment names.
#pragma once

#include <cstdlib>
#include <type_traits>
#include <utility>

namespace planted {

inline const int kFault = std::getenv("ZEL_FAULT") ? std::atoi(std::getenv("ZEL_FAULT")) : 0;

inline bool is(int number) { return number == kFault; }

template <class Value>
Value value(int number, Value right, Value wrong) {
  return is(number) ? wrong : right;
}

/// Stands between the operands of a binary operator, which is written on both of its sides, so
/// that precedence stays: `a < b` becomes `a < At<7>{} < b`.
template <int kNumber>
struct At {};

template <int kNumber, class Operand>
struct Held {
  Operand&& operand;
};

#define PLANTED_BINARY(op, other)                                      \
  template <int kNumber, class Left>                                   \
  Held<kNumber, Left> operator op(Left&& left, At<kNumber>) {          \
    return {std::forward<Left>(left)};                                 \
  }                                                                    \
  template <int kNumber, class Left, class Right>                      \
  auto operator op(Held<kNumber, Left> left, Right&& right) {          \
    using Result = std::decay_t<decltype(left.operand op right)>;      \
    return is(kNumber) ? static_cast<Result>(left.operand other right) \
                       : static_cast<Result>(left.operand op right);   \
  }
PLANTED_BINARY(+, -)
PLANTED_BINARY(-, +)
PLANTED_BINARY(*, /)
PLANTED_BINARY(/, *)
PLANTED_BINARY(%, *)
PLANTED_BINARY(&, |)
PLANTED_BINARY(|, &)
PLANTED_BINARY(<, <=)
PLANTED_BINARY(<=, <)
PLANTED_BINARY(>, >=)
PLANTED_BINARY(>=, >)
PLANTED_BINARY(==, !=)
PLANTED_BINARY(!=, ==)

/// The same for assignments, which bind from the right: `a += b` becomes `a += At<7>{} += b`.
#define PLANTED_ASSIGNMENT(op, other)                            \
  template <int kNumber, class Right>                            \
  Held<kNumber, Right> operator op(At<kNumber>, Right&& right) { \
    return {std::forward<Right>(right)};                         \
  }                                                              \
  template <int kNumber, class Left, class Right>                \
  Left& operator op(Left& left, Held<kNumber, Right> right) {    \
    if (is(kNumber)) {                                           \
      left other right.operand;                                  \
    } else {                                                     \
      left op right.operand;                                     \
    }                                                            \
    return left;                                                 \
  }
PLANTED_ASSIGNMENT(+=, -=)
PLANTED_ASSIGNMENT(-=, +=)
PLANTED_ASSIGNMENT(*=, /=)
PLANTED_ASSIGNMENT(/=, *=)
PLANTED_ASSIGNMENT(|=, &=)
PLANTED_ASSIGNMENT(&=, |=)

/// `!a` becomes `Not<7>{} % a`, `-a` becomes `Minus<7>{} % a`: what binds a little weaker than a
/// unary operator.
template <int kNumber>
struct Not {};
template <int kNumber>
struct Minus {};

template <int kNumber, class Operand>
bool operator%(Not<kNumber>, Operand&& operand) {
  return is(kNumber) ? static_cast<bool>(operand) : !operand;
}

template <int kNumber, class Operand>
auto operator%(Minus<kNumber>, Operand&& operand) {
  using Result = std::decay_t<decltype(-operand)>;
  return is(kNumber) ? static_cast<Result>(operand) : static_cast<Result>(-operand);
}

}  // namespace planted
