#!/usr/bin/env python3
"""The development API server: everything the client asks of the network, on 127.0.0.1.

    tools/dev_api_server.py --port 18471 --log requests.jsonl --rules rules.json

It shares no code with the client. It reads the requests itself, computes the expected signature
itself (403 where it differs), enciphers the discovery files itself, and answers every endpoint
from a small world of its own: accounts and sessions, 60 countries of lines, updates with a file to
download, feedback questions. What a mail would carry (the e-mailed codes) goes to standard output.

Rules make a path misbehave. A rules file (read again whenever it changes) or POST /_control with
"Content-Type: application/json" holds an object of path -> rule; "*" stands for every path:

    {"/api/system/index": {"status": 500},            the usual body with another status
     "/api/system/region": {"json": {"code": 1}},     a body of one's own ("text" for a raw one)
     "/us/cookie.txt": {"delay": 3, "times": 2},      late; only for the next two requests
     "/eu/cookie.txt": {"cut": true},                 announces the whole body, sends half of it
     "/lookup": {"garbage": 4096},                    that many random bytes
     "/page/a": {"size": 4096},                       a JSON object of that size
     "/page/b": {"cookies": 16000},                   that many Set-Cookie lines more
     "/page/c": {"endless": "headers"},               header after header; or "body"
     "/api/system/log": {"silent": true}}             takes the request and never answers

A rule of null takes a rule away; GET /_control shows the rules, the mails and what was pushed.

One JSON line a request goes to the log: time, method, path, signature (ok, missing, bad), the
common headers, the form fields in order, the status. Passwords stand in it: use test accounts.
"""

import argparse
import base64
import contextlib
import hashlib
import http.client
import itertools
import json
import os
import random
import re
import secrets
import socketserver
import sys
import threading
import time

SALT = b"Q#pd]3Ha>wz-8&Mv"  # shared with the client: signing salt and default key of the cipher
MAX_HEADERS = 64 * 1024
MAX_BODY = 16 * 1024 * 1024
IDLE_SECONDS = 30  # a connection that says nothing for so long is closed
SESSION_EXPIRED = 2000


# --- the signature and the cipher -----------------------------------------------------------


def signature_of(headers):
    """The signature that the common headers (name -> bytes) must carry."""
    pairs = [name.encode() + b"=" + headers[name] for name in sorted(headers)
             if name.startswith("_") and name != "_sign" and headers[name]]
    return hashlib.md5(b"&".join(pairs) + SALT).hexdigest()


def check_signature(headers):
    sign = headers.get("_sign")
    return "missing" if not sign else "ok" if sign == signature_of(headers).encode() else "bad"


def xor(data, key):
    return bytes(a ^ b for a, b in zip(data, itertools.cycle(key)))


def encipher(plain):
    """The text of a discovery file: masked payload, then time stamp and salt, 13 bytes each."""
    stamp = b"%013d" % (time.time() * 1000)
    salt = bytes(random.randrange(32, 122) for _ in range(13))
    key = hashlib.md5(stamp + salt + SALT).hexdigest().encode()
    masked = xor(base64.b64encode(plain), key) + xor(stamp, salt) + xor(salt, SALT)
    return base64.b64encode(masked)


# --- the data -------------------------------------------------------------------------------

# country code, name, longitude, latitude, number of lines, cities
COUNTRIES = [row.strip().split("|") for row in """
AE|United Arab Emirates|54.37|24.45|5|Dubai,Abu Dhabi; AL|Albania|19.82|41.33|1|Tirana;
AR|Argentina|-58.38|-34.60|4|Buenos Aires,Cordoba; AT|Austria|16.37|48.21|6|Vienna,Graz;
AU|Australia|151.21|-33.87|12|Sydney,Melbourne,Perth,Brisbane;
BA|Bosnia and Herzegovina|18.41|43.86|1|Sarajevo; BE|Belgium|4.35|50.85|6|Brussels,Antwerp;
BG|Bulgaria|23.32|42.70|4|Sofia; BR|Brazil|-46.63|-23.55|9|Sao Paulo,Rio de Janeiro,Fortaleza;
CA|Canada|-79.38|43.65|14|Toronto,Montreal,Vancouver,Calgary;
CH|Switzerland|8.54|47.38|9|Zurich,Geneva; CL|Chile|-70.67|-33.45|3|Santiago;
CO|Colombia|-74.07|4.71|3|Bogota; CR|Costa Rica|-84.09|9.93|1|San Jose;
CY|Cyprus|33.38|35.19|2|Nicosia; CZ|Czech Republic|14.44|50.08|7|Prague,Brno;
DE|Germany|13.40|52.52|18|Berlin,Frankfurt,Munich,Hamburg; DK|Denmark|12.57|55.68|7|Copenhagen;
EE|Estonia|24.75|59.44|3|Tallinn; EG|Egypt|31.24|30.04|2|Cairo;
ES|Spain|-3.70|40.42|10|Madrid,Barcelona,Valencia; FI|Finland|24.94|60.17|6|Helsinki;
FR|France|2.35|48.86|14|Paris,Marseille,Lyon;
GB|United Kingdom|-0.13|51.51|18|London,Manchester,Edinburgh; GE|Georgia|44.83|41.72|1|Tbilisi;
GR|Greece|23.73|37.98|4|Athens; HK|Hong Kong|114.17|22.32|11|Hong Kong;
HR|Croatia|15.98|45.81|2|Zagreb; HU|Hungary|19.04|47.50|4|Budapest;
ID|Indonesia|106.85|-6.21|8|Jakarta,Surabaya; IE|Ireland|-6.26|53.35|5|Dublin;
IL|Israel|34.78|32.09|4|Tel Aviv; IN|India|72.88|19.08|9|Mumbai,Chennai,Delhi;
IS|Iceland|-21.94|64.15|3|Reykjavik; IT|Italy|9.19|45.46|10|Milan,Rome;
JP|Japan|139.69|35.69|16|Tokyo,Osaka; KE|Kenya|36.82|-1.29|1|Nairobi;
KR|South Korea|126.98|37.57|9|Seoul,Busan; LT|Lithuania|25.28|54.69|2|Vilnius;
LU|Luxembourg|6.13|49.61|3|Luxembourg; LV|Latvia|24.11|56.95|3|Riga;
MD|Moldova|28.86|47.01|1|Chisinau; MX|Mexico|-99.13|19.43|5|Mexico City,Guadalajara;
MY|Malaysia|101.69|3.14|5|Kuala Lumpur; NG|Nigeria|3.38|6.52|1|Lagos;
NL|Netherlands|4.90|52.37|15|Amsterdam,Rotterdam; NO|Norway|10.75|59.91|6|Oslo,Bergen;
NZ|New Zealand|174.76|-36.85|4|Auckland; PL|Poland|21.01|52.23|8|Warsaw,Gdansk;
PT|Portugal|-9.14|38.72|5|Lisbon,Porto; RO|Romania|26.10|44.43|5|Bucharest;
RS|Serbia|20.46|44.82|2|Belgrade; SE|Sweden|18.07|59.33|10|Stockholm,Gothenburg,Malmo;
SG|Singapore|103.82|1.35|14|Singapore; TH|Thailand|100.50|13.76|4|Bangkok;
TR|Turkey|28.98|41.01|5|Istanbul,Izmir; TW|Taiwan|121.57|25.03|9|Taipei;
US|United States|-98.58|39.83|30|New York,Los Angeles,Chicago,Dallas,Miami,Seattle;
VN|Vietnam|105.83|21.03|4|Hanoi,Ho Chi Minh City;
ZA|South Africa|28.05|-26.20|4|Johannesburg,Cape Town
""".split(";")]

QUESTIONS = [dict(zip(("sn", "_en", "_de", "_ru", "_zh_cn", "_ar"), row.split("|")), id=number)
             for number, row in enumerate("""
SLOW|The connection is slow|Die Verbindung ist langsam|Медленное соединение|连接速度慢|الاتصال بطيء
DROP|The connection drops|Die Verbindung bricht ab|Соединение обрывается|连接经常断开|الاتصال ينقطع
FAIL|Cannot connect|Keine Verbindung möglich|Не удаётся подключиться|无法连接|يتعذر الاتصال
VIDEO|Video stutters|Videos ruckeln|Видео прерывается|视频卡顿|الفيديو متقطع
SITE|A website does not open|Eine Website öffnet sich nicht|Сайт не открывается|某个网站打不开|موقع لا يفتح
PLACE|Wrong location is shown|Falscher Standort wird angezeigt|Показано неверное место|显示的位置不正确|الموقع المعروض خاطئ
OTHER|Something else|Etwas anderes|Другое|其他问题|شيء آخر
""".strip().splitlines(), 1)]

LOOKUP = {"ip": "203.0.113.77", "country": "Indonesia", "area": "Asia", "province": "Jakarta",
          "city": "Jakarta", "cityid": 1642911, "isp": "Example Telecom"}

INIT_RECORD = {
    "private_agreement": "/page/private_agreement", "service_agreement": "/page/service_agreement",
    "wap_article_help_list": "/page/help", "wap_article_notice_list": "/page/notices",
    "email_verification_switch": "1", "default_mode": "sarko2-udp", "p2p_switch": "1",
    "srv_ports": {"tcp": "3102", "upd": "3101", "wss": "3103",  # "upd": the client reads this key
                  "vorn": "5000", "driver": "5000", "kcp": "2000"},
    "app_store_download_url": "https://apps.vornvpn.example/ios",
    "google_play_download_url": "https://apps.vornvpn.example/android",
    "support_protocols": "sarko2-udp,sarko2-wss"}

FULL_UPDATE = {"version": 3, "version_show": "1.1.0", "force": "false",
               "content": "Faster start, fewer reconnects.", "url": "/files/VornInstall.run"}
HOT_UPDATE = {"version": 2, "version_show": "1.0.2", "type": 1, "url": "/files/VORNTemp"}
# The files that updates name: a script that runs, filled up so that progress can be watched.
FILES = {"/files/" + name: f"#!/bin/sh\necho development build of {name}\nexit 0\n".encode()
         + b"# filling\n" * 60000 for name in ("VornInstall.run", "VORNTemp", "sarko2linuxTemp")}
DISCOVERY_PATHS = ("/us/cookie.txt", "/eu/cookie.txt", "/ca/cookie.txt", "/asia/cookie.txt")


def build_catalogue():
    """The lines of all countries, the same at every start."""
    dice = random.Random(20)
    line_id = itertools.count(1001)
    catalogue = []
    for code, name, lon, lat, number, cities in COUNTRIES:
        flag, cities, servers = f"flags/{code.lower()}.png", cities.split(","), []
        for index in range(int(number)):
            this, relayed = next(line_id), dice.random() < 0.25
            # The place is a JSON text inside the JSON; its quotes arrive with a backslash each.
            place = json.dumps({"lon": round(float(lon) + dice.uniform(-2, 2), 4),
                                "lat": round(float(lat) + dice.uniform(-2, 2), 4)})
            city = cities[index % len(cities)]
            servers.append({
                "id": this, "country_id": code, "name": f"{name} {city}", "name_en": name,
                "national_flag": flag, "ip": f"198.18.{this // 250}.{this % 250 + 1}",
                "domain": f"{code.lower()}-{index + 1}.lines.vornvpn.example",
                "uuid": hashlib.md5(b"line %d" % this).hexdigest(),
                "load": round(dice.uniform(1, 95), 1),
                "trans_domain": f"relay-{code.lower()}.lines.vornvpn.example" if relayed else "",
                "trans_ip": f"198.19.{this // 250}.{this % 250 + 1}" if relayed else "",
                "trans_port": "8443" if relayed else "",
                "srv_location": place.replace('"', '\\"')})
        catalogue.append({"img": flag, "name_en": name, "lon": lon, "lat": lat, "servers": servers})
    return catalogue


# --- the world behind the endpoints ---------------------------------------------------------


class Refusal(Exception):
    """A reply with a code other than 0; position tells the input field at fault."""

    def __init__(self, code, message, position=None):
        super().__init__(message)
        self.code, self.position = code, position


EMAIL, PASSWORD, CODE = 1, 2, 3  # positions of the input fields on the client's screens


class World:
    """Accounts, sessions, mails and what the clients pushed. Its lock is held for each request."""

    def __init__(self, session_seconds):
        self.lock = threading.Lock()
        self.session_seconds = session_seconds
        self.catalogue = build_catalogue()
        self.accounts, self.sessions = {}, {}
        self.codes, self.mails, self.pushed = {}, [], []
        self.next_uid = itertools.count(10001)
        self.add_account("demo@vornvpn.example", "demo-password")

    def add_account(self, email, password, active=True, visitor=False, key=None):
        uid = next(self.next_uid)
        account = {"email": email, "password": password, "active": active, "visitor": visitor,
                   "uid": uid, "username": f"vorn{uid}", "radius_pass": secrets.token_hex(6)}
        self.accounts[key or email] = account
        return account

    def open_session(self, account):
        token = secrets.token_hex(16)
        self.sessions[token] = (account, time.monotonic() + self.session_seconds)
        return {"session": token}

    def session_account(self, token):
        account, end = self.sessions.get(token, (None, 0))
        if account is None or time.monotonic() >= end:
            self.sessions.pop(token, None)
            raise Refusal(SESSION_EXPIRED, "the session has expired")
        return account

    def mail(self, to, text):
        self.mails = self.mails[-99:] + [{"to": to, "text": text}]
        print(f"mail to {to}: {text}", flush=True)

    def check_new(self, email, password="none needed"):
        if not re.fullmatch(r"[^@\s]+@[^@\s]+\.[^@\s]+", email):
            raise Refusal(1101, "this is not an e-mail address", EMAIL)
        if len(password) < 6:
            raise Refusal(1102, "the password needs 6 characters or more", PASSWORD)

    def use_code(self, email, code):
        if not code or self.codes.get(email) != code:
            raise Refusal(1103, "the code is wrong", CODE)
        del self.codes[email]

    def account_with_password(self, form):
        email, password = form["email"], form["password"]
        account = self.accounts.get(email)
        if account is None:
            raise Refusal(1104, "there is no such account", EMAIL)
        if account["password"] != password:
            raise Refusal(1105, "the password is wrong", PASSWORD)
        return account


# --- the endpoints: each takes the world and the request, and returns "data" ------------------


def login(world, request):
    account = world.account_with_password(request.form)
    if not account["active"]:
        raise Refusal(1106, "the account is not active yet", EMAIL)
    return world.open_session(account)


def visitor_login(world, request):
    device = "visitor:" + request.common("_sn")
    account = world.accounts.get(device) or world.add_account("", "", visitor=True, key=device)
    return world.open_session(account)


def third_login(world, request):
    identity = request.form.get("guid") or request.form.get("fuid")
    if not identity:
        raise Refusal(1107, "the platform's user id is missing")
    key = request.form["platform"] + ":" + identity
    account = world.accounts.get(key) or world.add_account(request.form["email"], "", key=key)
    return world.open_session(account)


def register(world, request):
    """With a code the account is active at once, without one it waits for its activation."""
    code, email, password = (request.form[name] for name in ("code", "email", "password"))
    world.check_new(email, password)
    if email in world.accounts:
        raise Refusal(1108, "there is an account with this address", EMAIL)
    if code:
        world.use_code(email, code)
    world.add_account(email, password, active=bool(code))
    return {}


def register_active(world, request):
    world.account_with_password(request.form)["active"] = True
    return {}


def forget(world, request):
    code, email, password = (request.form[name] for name in ("code", "email", "password"))
    if email not in world.accounts:
        raise Refusal(1104, "there is no such account", EMAIL)
    world.check_new(email, password)
    world.use_code(email, code)
    world.accounts[email]["password"] = password
    return {}


def get_email_code(world, request):
    email = request.form["email"]
    world.check_new(email)
    world.codes[email] = "%06d" % secrets.randbelow(1000000)
    world.mail(email, f"code {world.codes[email]} (type {request.form['code_type']})")
    return {}


def get_info(world, request):
    account = world.session_account(request.common("_session"))
    # The client shows the message that stands inside "data".
    return {"username": account["username"], "radius_pass": account["radius_pass"],
            "uid": account["uid"], "rd": f"rd{account['uid'] % 8}", "email": account["email"],
            "is_visitor": int(account["visitor"]), "msg": "success"}


def get_all_lines(world, request):
    words = [word for word in request.form.get("word", "").lower().split(",") if word]
    if not words:
        return world.catalogue
    found = (dict(country, servers=[server for server in country["servers"]
                                    if any(word in server["name"].lower() for word in words)])
             for country in world.catalogue)
    return [country for country in found if country["servers"]]


def offer(update):
    """An endpoint that offers the update to every older client."""
    def handler(world, request):
        version = request.common("_version")
        if version.isdigit() and int(version) >= update["version"]:
            raise Refusal(1, "this is the latest version")
        return dict(update, url=request.base + update["url"])
    return handler


def push(world, request):
    world.pushed = world.pushed[-199:] + [{"path": request.path, "fields": request.fields}]
    return {}


def download_link(world, request):
    world.check_new(request.form["email"])
    world.mail(request.form["email"], "download: " + request.base + "/files/VornInstall.run")
    return {}


CREDENTIALS = ("email", "password")
# path: handler, and the form's field names in order (several forms where the client has several)
ENDPOINTS = {
    "/api/account/login": (login, [CREDENTIALS]),
    "/api/account/visitor_login": (visitor_login, [()]),
    "/api/account/third_login": (third_login, [
        ("platform", "email", "nickname", *identity, "avatar")
        for identity in (["guid"], ["fuid"], [])]),
    "/api/account/register": (register, [("code", *CREDENTIALS)]),
    "/api/account/register_active": (register_active, [CREDENTIALS]),
    "/api/account/forget": (forget, [("code", *CREDENTIALS)]),
    "/api/account/getemailcode": (get_email_code, [("email", "code_type")]),
    "/api/account/get_info": (get_info, [()]),
    "/api/server/get_all_v2": (get_all_lines, [(), ("word",)]),
    "/api/server/push_connect_state": (
        push, [("srvid", "status", "start_time", "end_time", "protocol")]),
    "/api/server/push_myip": (
        push, [("cityid", "ip", "country", "area", "province", "city", "isp")]),
    "/api/server/push_search_word": (push, [("word",)]),
    "/api/system/index": (lambda world, request: INIT_RECORD, [("is_first_install",)]),
    "/api/system/region": (lambda world, request: {"wl": 0, "ip": LOOKUP["ip"]}, [()]),
    "/api/system/updateInfo": (offer(FULL_UPDATE), [()]),
    "/api/system/hot_update": (offer(HOT_UPDATE), [()]),
    "/api/system/questions": (lambda world, request: QUESTIONS, [()]),
    "/api/system/feedback": (push, [("tag", "content", "type", "linkman", "props", "rate")]),
    "/api/system/operation": (push, [("type",)]),
    "/api/system/push_language": (push, [("type", "language")]),
    "/api/system/log": (push, [("flag",), ("flag", "status"), ("flag", "status", "info"),
                               ("flag", "type", "language"), ("flag", "data")]),
    "/api/system/send_download_link": (download_link, [("email",)]),
}


def call_endpoint(world, request):
    """The reply envelope of an API call."""
    handler, forms = ENDPOINTS[request.path]
    names = tuple(name for name, _ in request.fields)
    try:
        if names not in forms:
            raise Refusal(1001, f"unexpected form fields {list(names)}, wanted {forms}")
        with world.lock:
            return {"code": 0, "msg": "success", "data": handler(world, request)}
    except Refusal as refusal:
        data = {"msg": str(refusal)}
        if refusal.position is not None:
            data["error_position"] = str(refusal.position)
        return {"code": refusal.code, "msg": str(refusal), "data": data}


# --- HTTP -----------------------------------------------------------------------------------


class BadRequest(Exception):
    def __init__(self, status, message):
        super().__init__(message)
        self.status = status


class Request:
    """One request as read from the connection; header names are lower-case, "_" ones as sent."""

    def __init__(self, method, target, headers, base):
        self.method, self.headers, self.base = method, headers, base
        self.path = target.partition("?")[0]
        self.fields, self.form = [], {}

    def common(self, name):
        return self.headers.get(name, b"").decode("utf-8", "replace")

    def read_form(self, body):
        kind = self.headers.get("content-type", b"")
        boundary = re.search(rb'boundary="?([^";]+)"?', kind)
        if not kind.startswith(b"multipart/form-data") or not boundary:
            raise BadRequest(415, "a multipart form is wanted")
        self.fields = parse_multipart(body, b"--" + boundary.group(1))
        self.form = dict(self.fields)


def parse_multipart(body, delimiter):
    """The fields in order. A form without fields is only the closing delimiter."""
    pieces = (b"\r\n" + body).split(b"\r\n" + delimiter)
    if len(pieces) < 2 or not pieces[-1].startswith(b"--"):
        raise BadRequest(400, "the form has no closing boundary")
    fields = []
    for piece in pieces[1:-1]:
        head, blank, value = piece.partition(b"\r\n\r\n")
        name = re.search(rb'content-disposition:\s*form-data;\s*name="([^"]*)"', head, re.I)
        if not blank or not name:
            raise BadRequest(400, "a part of the form has no name")
        fields.append((name.group(1).decode("utf-8", "replace"), value.decode("utf-8", "replace")))
    return fields


class Connection(socketserver.StreamRequestHandler):
    """Serves one connection, request after request, until either side has enough."""

    timeout = IDLE_SECONDS

    def handle(self):
        with contextlib.suppress(OSError):  # the client went away
            while self.serve_one():
                pass

    def serve_one(self):
        """Reads and answers one request; false when the connection is to be closed."""
        line = self.rfile.readline(MAX_HEADERS)
        if not line.strip():
            return False
        request = None
        rule, kind = {}, "text/plain"
        try:
            request = self.read_head(line)
            body = self.read_body(request)
            rule = self.server.rules.take(request.path)
            status, kind, content = self.answer(request, body)
            if status == 403:
                rule = {}  # no rule hides a wrong signature
        except BadRequest as bad:
            status, content = bad.status, f"{bad}\n".encode()
        except OSError:
            raise
        except Exception as fault:  # a fault of this server must not look like a dead network
            status, content = 500, f"{fault!r}\n".encode()
            print("fault:", repr(fault), file=sys.stderr, flush=True)
        keep = request is not None and status not in (400, 413)
        keep = keep and request.headers.get("connection", b"").lower() != b"close"
        return self.send(request, rule, status, kind, content) and keep

    def read_head(self, line):
        words = line.decode("latin-1").split()
        if len(words) != 3 or not words[2].startswith("HTTP/1."):
            raise BadRequest(400, "this is no HTTP request line")
        headers, size = {}, 0
        while True:
            line = self.rfile.readline(MAX_HEADERS)
            size += len(line)
            if size >= MAX_HEADERS:
                raise BadRequest(413, "the headers are too long")
            if not line.strip():
                return Request(words[0], words[1], headers, self.server.base)
            name, colon, value = line.partition(b":")
            if not colon or not name:
                raise BadRequest(400, "a header has no name or no colon")
            name = name.decode("latin-1")
            headers[name if name[:1] == "_" else name.lower()] = value.strip(b" \t\r\n")

    def read_body(self, request):
        length = request.headers.get("content-length", b"0")
        if not length.isdigit() or len(length) > 9 or int(length) > MAX_BODY:
            raise BadRequest(413, "the body is too long")
        return self.rfile.read(int(length))

    def answer(self, request, body):
        """Status, content type and content as they are without a rule."""
        if request.path in ENDPOINTS:
            if request.method != "POST":
                raise BadRequest(405, "the API is asked with POST")
            request.read_form(body)
            if check_signature(request.headers) != "ok":
                return json_answer({"code": 403, "msg": "the signature is wrong"}, 403)
            return json_answer(call_endpoint(self.server.world, request))
        if request.path == "/_control":
            return json_answer(self.server.control(request, body))
        if request.method != "GET":
            raise BadRequest(404, "nothing is posted to this path")
        if request.path in DISCOVERY_PATHS:
            return 200, "text/plain", encipher(self.server.base.encode())
        if request.path == "/lookup":
            return json_answer(LOOKUP)
        if request.path in FILES:
            return 200, "application/octet-stream", FILES[request.path]
        if re.fullmatch(r"/page/\w+", request.path):
            title = request.path[6:].replace("_", " ").capitalize()
            return 200, "text/html; charset=utf-8", (
                f"<!doctype html><title>{title}</title><h1>{title}</h1>"
                "<p>This page comes from the development server.</p>").encode()
        raise BadRequest(404, "there is nothing at this path")

    def send(self, request, rule, status, kind, content):
        """Sends the answer as the rule wants it; false when the connection is to be closed."""
        if "json" in rule:
            status, kind, content = json_answer(rule["json"])
        elif "text" in rule:
            status, kind, content = 200, "text/html; charset=utf-8", str(rule["text"]).encode()
        elif "garbage" in rule:
            status, content = 200, random.randbytes(int(rule["garbage"]))
        elif "size" in rule:
            status, kind, content = json_answer({"code": 0, "pad": "x" * int(rule["size"])})
        status = int(rule.get("status", status))
        self.server.record(request, status, rule)
        time.sleep(float(rule.get("delay", 0)))
        if rule.get("silent"):
            self.connection.settimeout(None)
            while self.connection.recv(4096):  # until the client gives up
                pass
            return False
        head = (f"HTTP/1.1 {status} {http.client.responses.get(status, 'Status')}\r\n"
                f"Content-Type: {kind}\r\nContent-Length: {len(content)}\r\n"
                "Cache-Control: no-store\r\n\r\n").encode()
        if "cookies" in rule:
            lines = "".join(f"Set-Cookie: c{number}=1\r\n" for number in range(int(rule["cookies"])))
            head = head.replace(b"\r\n\r\n", b"\r\n" + lines.encode() + b"\r\n")
        if "endless" in rule:
            self.send_endlessly(status, rule["endless"])
            return False
        if rule.get("cut"):
            content = content[:len(content) // 2]
        self.wfile.write(head + content)
        return not rule.get("cut")

    def send_endlessly(self, status, part):
        """Until the client goes away, a line more of the headers or of a body without a length."""
        self.wfile.write(f"HTTP/1.1 {status} Status\r\n".encode())
        if part == "body":
            self.wfile.write(b"Connection: close\r\n\r\n")
        while True:
            self.wfile.write(b"X-More: " + b"x" * 8000 + b"\r\n")


def json_answer(value, status=200):
    return status, "application/json", json.dumps(value, ensure_ascii=False).encode()


class Rules:
    """What /_control and the rules file say about paths; /_control wins."""

    def __init__(self, file_name):
        self.lock = threading.Lock()
        self.file_name, self.stamp = file_name, None
        self.from_file, self.from_control = {}, {}

    def reload(self):
        if not self.file_name:
            return
        try:
            stat = os.stat(self.file_name)
            if self.stamp != (stat.st_mtime_ns, stat.st_size):
                self.stamp = (stat.st_mtime_ns, stat.st_size)
                with open(self.file_name, encoding="utf-8") as file:
                    self.from_file = checked_rules(json.load(file))
        except FileNotFoundError:
            self.from_file, self.stamp = {}, None
        except (OSError, ValueError) as fault:
            print(f"{self.file_name}: {fault}", file=sys.stderr, flush=True)

    def take(self, path):
        """The rule for this request; one of the "times" of a rule is used up."""
        if path == "/_control":
            return {}
        with self.lock:
            self.reload()
            for rule in (rules.get(key) for rules in (self.from_control, self.from_file)
                         for key in (path, "*")):
                if rule is not None and rule.get("times", 1) > 0:
                    if "times" in rule:
                        rule["times"] -= 1
                    return dict(rule)
        return {}

    def merge(self, changes):
        """Adds rules of /_control and returns all that are in force."""
        changes = checked_rules(changes)
        with self.lock:
            self.reload()
            self.from_control.update(changes)
            return {**self.from_file, **self.from_control}


def checked_rules(value):
    if isinstance(value, dict) and all(rule is None or isinstance(rule, dict)
                                       for rule in value.values()):
        return value
    raise ValueError("rules are an object of path -> rule")


class Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    allow_reuse_address = True
    request_queue_size = 128

    def __init__(self, options):
        super().__init__(("127.0.0.1", options.port), Connection)
        self.base = f"http://127.0.0.1:{self.server_address[1]}"
        self.world = World(options.session_seconds)
        self.rules = Rules(options.rules)
        self.log_lock = threading.Lock()
        self.log = open(options.log, "a", encoding="utf-8") if options.log else None

    def control(self, request, body):
        # A web page cannot send this type here without asking first, and is never allowed to.
        if body and request.headers.get("content-type") != b"application/json":
            raise BadRequest(415, "rules are application/json")
        try:
            rules = self.rules.merge(json.loads(body or b"{}"))
        except ValueError as fault:
            raise BadRequest(400, str(fault)) from fault
        with self.world.lock:
            return {"rules": rules, "mails": self.world.mails, "pushed": self.world.pushed}

    def record(self, request, status, rule):
        if self.log is None:
            return
        entry = {"time": round(time.time(), 3), "status": status}
        if request is not None:
            common = {name: request.common(name) for name in request.headers if name[0] == "_"}
            entry.update(method=request.method, path=request.path, headers=common, rule=rule,
                         signature=check_signature(request.headers), fields=request.fields)
        with self.log_lock:
            self.log.write(json.dumps(entry, ensure_ascii=False) + "\n")
            self.log.flush()


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--port", type=int, default=18471, help="0 takes any free port")
    parser.add_argument("--port-file", help="where to write the port once it is open")
    parser.add_argument("--log", help="one JSON line a request is appended to this file")
    parser.add_argument("--rules", help="JSON file of path -> rule, read again when it changes")
    parser.add_argument("--session-seconds", type=float, default=3600)
    options = parser.parse_args()
    try:
        server = Server(options)
    except OSError as fault:
        sys.exit(f"cannot listen on 127.0.0.1:{options.port}: {fault}")
    if options.port_file:
        with open(options.port_file, "w", encoding="ascii") as file:
            file.write(f"{server.server_address[1]}\n")
    print(f"development API server on {server.base}", flush=True)
    with contextlib.suppress(KeyboardInterrupt):
        server.serve_forever(poll_interval=0.2)


if __name__ == "__main__":
    main()
