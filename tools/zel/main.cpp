#include <cstdio>

int main() {
  std::puts("zel");
  return 0;
}
