#pragma once
#include <map>

#include "platform/devio/IPortAddr.h"

namespace devio {

// A parsed link text: scheme, path and options; its properties are the options with their
// canonical names (baud -> "BaudRate", ...).
class CPortAddr final : public basekit::CRefCounted<IPortAddr, IPropertyContainer> {
public:
    CPortAddr(EPortType type, ustring name, std::map<ustring, QVariant> properties, ustring url);

    EPortType GetType() const override { return m_type; }
    ustring GetName() const override { return m_name; }
    CSmartPtr<IPropertyContainer> GetProperties() const override;
    ustring ToUrl() const override { return m_url; }
    QVariant GetProperty(const ustring& name) const override;

    // Gives the AddRef/Release of both bases one meaning.
    void AddRef() const noexcept override { CRefCounted::AddRef(); }
    void Release() const noexcept override { CRefCounted::Release(); }

private:
    EPortType m_type;
    ustring m_name;
    std::map<ustring, QVariant> m_properties;
    ustring m_url;
};

}  // namespace devio
