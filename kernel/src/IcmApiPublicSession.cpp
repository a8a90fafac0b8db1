#include "IcmApiPublicSession.h"

#include "IcmIteratorTable.h"

IcmApiPublicSession::~IcmApiPublicSession() = default;

void IcmApiPublicSession::IcmIteratorDelete(void*& iterator) {
    IcmIteratorTable::Get().Release(iterator);
    iterator = nullptr;
}

std::size_t IcmApiPublicSession::GetLiveIteratorCount() {
    return IcmIteratorTable::Get().Size();
}
