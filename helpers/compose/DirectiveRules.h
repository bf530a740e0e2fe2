#pragma once

#include <string_view>

/// What becomes of a directive of a profile.
enum class Action {
    Pass,     ///< goes to OpenVPN
    LeaveOut, ///< does not, with a log line
    Replace,  ///< does not, without a log line: Korvan gives OpenVPN a setting of its own
    Refuse,   ///< ends the whole attempt
    Unknown,  ///< on no list
};

/// What the parameter of a directive that is a file name must name.
enum class FileKind { None, File, Folder, Credentials };

struct DirectiveRule
{
    Action action = Action::Unknown;
    std::string_view reason; ///< for LeaveOut and Refuse
    size_t fileWord = 0;     ///< which word is a file name; 0: none
    FileKind fileKind = FileKind::None;
    bool block = false; ///< may be given as an inline block
};

/// The rule for a directive of OpenVPN 2.6 or one of its ancestors. Names are case-sensitive, as they are to OpenVPN.
DirectiveRule ruleFor(std::string_view name);
