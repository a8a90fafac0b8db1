// Compiles against both umbrella headers and links both installed libraries.
#include <qzecad.h>
#include <qzkernel.h>

#include <cstdio>

int main() {
    // An exported class of the layer, over a kernel record: both libraries must resolve.
    qzkapp::ecad::SearchQueryInfo info;
    info.SetDlgLastConfig(du::MakeCounted<queryinterface::SimpleQuery>("U*"));
    du::SmartPtr<du::RefCounted> factory;
    bool const made = QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &factory);
    std::printf("consumer: query \"%s\", factory %s\n", info.GetDlgLastConfig()->text.c_str(),
                made ? "made" : "refused");
    return made && info.GetDlgLastConfig()->text == "U*" ? 0 : 1;
}
