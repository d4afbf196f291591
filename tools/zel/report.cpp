#include "tools/zel/report.h"

#include <iterator>
#include <utility>

#include "tools/zel/number_text.h"

namespace zel::program {

Report::Report(const std::string& file) : text_(file + "\n"), values_{{"file", file}} {}

void Report::row(const std::string& label, const std::string& shown, Values values) {
  if (!shown.empty()) {
    text_ += reportRow(label, shown);
  }
  add(std::move(values));
}

void Report::count(const std::string& label, const std::string& key, long long number) {
  row(label, groupedText(number), {{key, number}});
}

void Report::measure(const std::string& label, const std::string& key, double number,
                     const std::string& unit) {
  row(label, shortText(number) + unit, {{key, number}});
}

void Report::answer(const std::string& label, const std::string& key, bool isSo,
                    const std::string& yes, const std::string& no) {
  row(label, isSo ? yes : no, {{key, isSo}});
}

void Report::line(const std::string& shown, Values values) {
  text_ += shown + "\n";
  add(std::move(values));
}

std::string Report::print(bool asJson) const { return asJson ? Json(values_).line() : text_; }

void Report::add(Values values) {
  values_.insert(values_.end(), std::make_move_iterator(values.begin()),
                 std::make_move_iterator(values.end()));
}

}  // namespace zel::program
