#include "platform/basekit/CResourceInstance.h"

#include <atomic>
#include <mutex>

namespace basekit {

namespace {
const CResourceInstance kEmpty("empty", nullptr);
std::atomic<const CResourceInstance*> g_default{&kEmpty};
thread_local const CResourceInstance* t_current = nullptr;

std::mutex& TranslatorMutex() { static std::mutex m; return m; }
CResourceInstance::Translator& TranslatorSlot() { static CResourceInstance::Translator t; return t; }
}  // namespace

const CResourceInstance& CResourceInstance::Current() {
    return t_current ? *t_current : *g_default.load();
}

void CResourceInstance::SetDefault(const CResourceInstance* instance) {
    g_default.store(instance ? instance : &kEmpty);
}

void CResourceInstance::SetTranslator(Translator translator) {
    const std::lock_guard lock(TranslatorMutex());
    TranslatorSlot() = std::move(translator);
}

std::wstring CResourceInstance::Translate(const std::wstring& text) {
    const std::lock_guard lock(TranslatorMutex());
    return TranslatorSlot() ? TranslatorSlot()(text) : text;
}

CResourceScope::CResourceScope(const CResourceInstance& instance) : m_previous(t_current) {
    t_current = &instance;
}

CResourceScope::~CResourceScope() { t_current = m_previous; }

}  // namespace basekit
