#include <cstdio>
int main() {
    std::puts("qzhost");
    return 0;
}
