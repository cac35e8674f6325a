#!/usr/bin/env python3
"""Writes samples/evening.log: an evening of a five-against-five match, as a
game client's console would have saved it (colour codes, chat, connects,
noise, CR LF line ends). Deterministic: the same seed gives the same bytes."""
import random
import sys

BLUE = ["^4Ace^7", "^4Blaze^7", "^4Cobalt^7", "^4Drift^7", "^4Ember^7"]
RED = ["^1Fury^7", "^1Grim^7", "^1Havoc^7", "^1Ion^7", "^1Jinx^7"]
MAPS = ["2fort", "well", "openfire", "rock"]

# (fragment, victim first?, suffix) for every kill message the game prints.
WEAPON_KILLS = [
    (" almost dodged ", " Napalm Rocket"), (" almost dodged ", " Rocket"),
    (" was popped by ", " Goodyear Grenade"), (" was fried by ", " Napalm Grenade"),
    (" was shredded by ", " Shrapnel Grenade"), (" caught flak from ", " Shrapnel Grenade"),
    (" was popped by ", " Grenade"), (" ate ", " Napalm Rocket"), (" ate ", " Rocket"),
    (" saw ", " Light"), (" didn't survive ", " Kamikaze run"), (" ate ", " Homing Missile"),
    (" swallowed a burst from ", " Uzi"), (" was gunned down by ", " Super Shotgun"),
    (" intercepted ", " Sentry Killer"), (" was liquidated by ", " Sentry Gun Rocket"),
    (" was melted ", " Plasmabomb"), (" was laid low by ", " Sentry Gun"),
    (" was sucked into ", " Magnotron"), (" fell for ", " Pipe Bomb"),
    (" was plugged by ", " Turret Grenade"), (" swallowed ", " Proximity Grenade"),
    (" was broiled by ", " Flamethrower"), (" was immolated by ", " Flames"),
    (" was too close to ", " Sentry Killer"), (" got torn up by ", " minigun"),
    (" caught ", " Handgrenade"), (" didn't see ", " Handgrenade"),
    (" fell prey to ", " plague"), (" was poisoned by ", " dart"),
]
PLAIN_KILLS = [
    " was chewed up by ", " was railed by ", " was electrocuted by ",
    " 's head was blown off by ", " was sniped by ", " was knifed by ",
    " had his legs blown out from under him by ", " was cored by ", " was gunned down by ",
    " was blasted by ", " was assassinated by ", " was frozen by ", " was pummelled by ",
    " was pummeled by ", " committed suicide while plagued by ",
]
SUICIDES = [
    " blew himself up.", " killed himself.", " killed herself.", " tripped on his own grenade.",
    " tripped on her own grenade.", " burned himself.", " was in the wrong place.",
    " cratered.", " sank like a rock.", " does a back flip into the lava.", " was squished.",
]
CHAT = ["gg", "nice cap!", "def needs help", "medic!", "sentry down at ramp", "rush now", "lol"]
NOISE = ["Loading map...", "==== ShutdownGame ====", "------ Server Initialization ------",
         "Server command overflow", "Unpure client detected. Invalid .PK3 files referenced!",
         "R_Init: 1024x768", "Sound initialization successful."]


def flag_lines(player, own, enemy):
    """Flag messages a player of team `own` can cause (enemy is the other colour)."""
    return [
        f"{player} got the {enemy} flag!", f"{player} captured the {enemy} flag!",
        f"{player} fragged {enemy}'s flag carrier!", f"{player} defends the {own} flag.",
        f"{player} defends the {own} base.",
        f"{player} defends {own}'s flag carrier against an aggressive enemy",
        f"{player} defends {own}'s flag carrier against an agressive enemy",
        f"{player} defends the {own}'s flag carrier.",
    ]


def kill_line(rng, victim, killer):
    if rng.random() < 0.55:
        fragment, suffix = rng.choice(WEAPON_KILLS)
        return f"{victim}{fragment}{killer}'s{suffix}"
    return f"{victim}{rng.choice(PLAIN_KILLS)}{killer}"


def event(rng):
    blue_acts = rng.random() < 0.5
    team, other = (BLUE, RED) if blue_acts else (RED, BLUE)
    own, enemy = ("BLUE", "RED") if blue_acts else ("RED", "BLUE")
    actor = rng.choice(team)
    roll = rng.random()
    if roll < 0.55:
        return kill_line(rng, rng.choice(other), actor)
    if roll < 0.70:
        return rng.choice(flag_lines(actor, own, enemy))
    if roll < 0.76:
        return f"{actor}{rng.choice(SUICIDES)}"
    if roll < 0.82:
        return f"{rng.choice(other)}'s Sentry Gun was destroyed by {actor}."
    if roll < 0.92:
        return f"{actor}: ^2{rng.choice(CHAT)}"
    return rng.choice(NOISE)


def every_message_once():
    """One line per message of the game, so the sample exercises them all."""
    lines = [f"{BLUE[i % 5]}{f}{RED[i % 5]}'s{s}" for i, (f, s) in enumerate(WEAPON_KILLS)]
    lines += [f"{RED[i % 5]}{f}{BLUE[i % 5]}" for i, f in enumerate(PLAIN_KILLS)]
    lines += flag_lines(BLUE[0], "BLUE", "RED") + flag_lines(RED[0], "RED", "BLUE")
    lines += [f"{BLUE[i % 5]}{s}" for i, s in enumerate(SUICIDES)]
    lines.append(f"{RED[1]}'s Sentry Gun was destroyed by {BLUE[1]}.")
    return lines


def main():
    rng = random.Random(2026)
    lines = []
    for n, name in enumerate(MAPS):
        lines += [f"==== Map {name} ====", "------ Server Initialization ------"]
        for p in BLUE + RED:
            lines.append(f"{p} connected")
            lines.append(f"{p} entered the game")
        if n == 0:
            lines += every_message_once()
        lines += [event(rng) for _ in range(650)]
        lines.append(f"{rng.choice(RED)} disconnected")
    sys.stdout.buffer.write("".join(l + "\r\n" for l in lines).encode("cp1252"))


if __name__ == "__main__":
    main()
