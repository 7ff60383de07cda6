#include "radio/RadioJob.h"

CJobThread::~CJobThread() {
    if (m_thread.joinable() && m_cancel)
        m_cancel->SetEvent();
    Wait();
}

void CJobThread::Wait() {
    if (m_thread.joinable())
        m_thread.join();
}
