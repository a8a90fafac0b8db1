// Compiles against both umbrella headers and links both libraries.
#include <qzecad.h>
#include <qzkernel.h>

#include <cstdio>

int main() {
    du::Symbol name("consumer");
    std::printf("consumer built against the installed kernel: %s\n", name.safe_c_str());
    return name.length() == 8 ? 0 : 1;
}
