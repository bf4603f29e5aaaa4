// Names for screen readers. A window's text is its name. Text boxes have no such name, so they get
// their caption, or the text of the label or option before them.
#include "ui/win32/Native.h"

#include <objbase.h>
#include <oleacc.h>

namespace ui::win32 {

namespace {

// {B5F8350B-0548-48B1-A6EE-88BD00B4A5E7}: the documented id of the service that names windows.
constexpr GUID idServices{
    0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID idServicesInterface{
    0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr GUID idName{0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID idRole{0xCB905FF2, 0x7BD1, 0x4C05, {0xB3, 0xC8, 0xE6, 0xC2, 0x41, 0x36, 0x4D, 0x70}};

IAccPropServices* Services() {
    static IAccPropServices* services = [] {
        void* made = nullptr;
        if (EnsureCom())
            (void)CoCreateInstance(idServices, nullptr, CLSCTX_INPROC_SERVER, idServicesInterface,
                                   &made);
        return static_cast<IAccPropServices*>(made);
    }();
    return services;
}

std::string NameOf(const NativeForm& form, const Control& control) {
    if (!control.Caption.empty())
        return control.Caption;
    std::string name;
    for (const auto& other : form.Controls) {
        if (other->Which == &control)
            break;
        const Control& before = *other->Which;
        const bool names = before.Kind == ControlKind::Label ||
                           before.Kind == ControlKind::OptionButton ||
                           before.Kind == ControlKind::CheckBox;
        if (names && before.Container == control.Container && !before.Caption.empty())
            name = before.Caption;
    }
    return name;
}

} // namespace

void NameForAccessibility(NativeForm& form, NativeControl& native) {
    const ControlKind kind = native.Which->Kind;
    if (kind != ControlKind::TextBox && kind != ControlKind::ComboBox &&
        kind != ControlKind::ListBox && kind != ControlKind::ProgressBar)
        return;
    const std::string name = NameOf(form, *native.Which);
    if (name == native.AccessibleName)
        return;
    native.AccessibleName = name;
    if (IAccPropServices* services = Services())
        services->SetHwndPropStr(native.Window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                 idName, Widen(name).c_str());
}

void RoleOfLink(HWND window) {
    VARIANT role{};
    role.vt = VT_I4;
    role.lVal = ROLE_SYSTEM_LINK;
    if (IAccPropServices* services = Services())
        services->SetHwndProp(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, idRole, role);
}

} // namespace ui::win32
