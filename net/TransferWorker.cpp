#include "net/TransferWorker.h"

#include "net/Curlinet.h"

CTransferWorker::~CTransferWorker() {
    Cancel();
    if (m_thread.joinable())
        m_thread.join();
}

void CTransferWorker::Start(const CString& url, const CString& target, unsigned maxBytes) {
    m_thread = std::thread(&CTransferWorker::Run, this, url, target, maxBytes);
}

void CTransferWorker::Run(CString url, CString target, unsigned maxBytes) {
    CCurlinet net;
    bool stopped = false;
    net.m_watch = [this, &stopped](uint64_t received, uint64_t total) {
        m_received = received;
        m_total = total;
        stopped = m_cancel;
        return !stopped;
    };
    const BOOL ok = net.GetInternetData(url, target, &m_error, maxBytes);
    m_result = ok;
    m_cancelled = !ok && stopped;
    m_done = true;
}

BOOL CTransferWorker::Wait() {
    if (m_thread.joinable())
        m_thread.join();
    return m_result;
}
