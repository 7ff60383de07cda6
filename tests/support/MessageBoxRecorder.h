// Records every message box shown while it lives, and answers each with a
// chosen button, so tests can check the exact texts the program shows.
#pragma once
#include <deque>
#include <vector>

#include "platform/base/MessageBox.h"

class MessageBoxRecorder {
public:
    MessageBoxRecorder() {
        m_previous = SetMessageBoxHook([this](const MessageBoxRequest& request) {
            m_boxes.push_back(request);
            if (!m_answers.empty()) {
                int answer = m_answers.front();
                m_answers.pop_front();
                return answer;
            }
            return DefaultMessageBoxAnswer(request.type);
        });
    }
    ~MessageBoxRecorder() { SetMessageBoxHook(m_previous); }

    // The next box gets this answer instead of its default.
    void Answer(int button) { m_answers.push_back(button); }

    const std::vector<MessageBoxRequest>& Boxes() const { return m_boxes; }
    std::vector<CString> Texts() const {
        std::vector<CString> texts;
        for (const auto& box : m_boxes)
            texts.push_back(box.text);
        return texts;
    }
    void Clear() { m_boxes.clear(); }

private:
    MessageBoxHook m_previous;
    std::vector<MessageBoxRequest> m_boxes;
    std::deque<int> m_answers;
};
