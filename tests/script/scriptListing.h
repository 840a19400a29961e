#pragma once

#include "script/XScriptBuilder.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// A program image in one line, for tables: the header's slot count and a colon, then the
/// instructions, separated by "; ". An operand is a decimal (integers), 5%0 (modular integer and
/// its slot), 'x' (string), x (name), v0 s0 c0 (variable, temporary, captured variable),
/// fn(entry,maxStack,params,[slots]), true, false, ax. Code offsets are numbers of instructions,
/// from 0, with an @ in front.
class ScriptListing {
public:
    explicit ScriptListing(std::vector<uint8_t> image) : m_image(std::move(image)), m_code(&m_image)
    {
        numberInstructions();
    }

    std::string text()
    {
        std::string result = std::to_string(m_image.at(0) + 256 * m_image.at(1)) + ":";
        m_code.setPos(huge::progHeaderSize);
        const char* separator = " ";
        for (huge::xop_type op = m_code.readOp(); op != huge::OP_NULL; op = m_code.readOp()) {
            result += separator;
            result += huge::xopName(op);
            for (int i = 0; i < huge::xopOperands(op); ++i)
                result.append(" ").append(operand(m_code.readOperand(), op));
            separator = "; ";
        }
        return result;
    }

private:
    void numberInstructions()
    {
        m_code.setPos(huge::progHeaderSize);
        for (int number = 0;; ++number) {
            m_numberOf[m_code.pos()] = number;
            const huge::xop_type op = m_code.readOp();
            if (op == huge::OP_NULL)
                break;
            for (int i = 0; i < huge::xopOperands(op); ++i)
                m_code.readOperand();
        }
    }

    std::string place(int64_t offset) const
    {
        const auto found = m_numberOf.find(offset);
        return found == m_numberOf.end() ? "?" : "@" + std::to_string(found->second);
    }

    std::string operand(const huge::prog_od& od, huge::xop_type op) const
    {
        using namespace huge;
        switch (od.type) {
        case OD_BOOL:
            return od.asBool() ? "true" : "false";
        case OD_INT:
            return std::get<od_int>(od.value).value.toString();
        case OD_MODINT:
            return std::get<od_modint>(od.value).value.toString() + "%" + std::to_string(od.modIdx);
        case OD_FLOAT:
            return std::get<od_float>(od.value).value.toString();
        case OD_IMAG:
            return std::get<od_imag>(od.value).value.toString() + "i";
        case OD_OFFSET:
            return op == OP_CLOSURE_BEGIN ? std::to_string(od.asInt64()) : place(od.asInt64());
        case OD_STR:
            return "'" + std::get<od_str>(od.value).value + "'";
        case OD_EXTEND:
            return std::get<od_extend>(od.value).name;
        case OD_STACKVAR:
            return "v" + std::to_string(od.asInt64());
        case OD_STACK:
            return "s" + std::to_string(od.asInt64());
        case OD_CLOSUREVAR:
            return "c" + std::to_string(od.asInt64());
        case OD_CLOSURE:
            return closure(std::get<od_closure>(od.value));
        case OD_AX:
            return "ax";
        default:
            return "?";
        }
    }

    std::string closure(const huge::od_closure& od) const
    {
        std::string slots;
        for (const uint16_t slot : od.closureVars)
            slots.append(slots.empty() ? "" : ",").append(std::to_string(slot));
        return "fn(" + place(od.entry) + "," + std::to_string(od.maxStack) + "," +
               std::to_string(od.paramCount) + ",[" + slots + "])";
    }

    std::vector<uint8_t> m_image;
    huge::XScriptBuilder m_code;
    std::map<int64_t, int> m_numberOf;
};
