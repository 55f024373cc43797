#pragma once

#include "app/checked.h"

#include <QMetaObject>
#include <QObject>

#include <map>
#include <utility>
#include <vector>

/// The connections of all objects of one class, by object. A class that wires signals keeps one
/// such table as its class-wide `s_connections`, stores into it in `setupConnections()` and
/// releases in its destructor.
template <class Owner>
class CConnectionTable
{
public:
    void store(Owner* owner, std::vector<QMetaObject::Connection>&& connections)
    {
        m_connections[owner] = std::move(connections);
    }

    /// Disconnects what `owner` stored and forgets it. Throws std::out_of_range
    /// "invalid map<K, T> key" for an owner that stored nothing.
    void release(Owner* owner)
    {
        for (const QMetaObject::Connection& connection : checked::at(m_connections, owner)) {
            QObject::disconnect(connection);
        }
        m_connections.erase(owner);
    }

private:
    std::map<Owner*, std::vector<QMetaObject::Connection>> m_connections;
};
