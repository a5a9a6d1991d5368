"use strict";
(() => {
  const at = id => document.getElementById(id);
  const root = document.documentElement;

  // Dark or light: as the system says, until someone chooses.
  const remembered = (value) => {
    try { // files have no storage in some browsers
      if (value) localStorage.setItem("velum-theme", value);
      return localStorage.getItem("velum-theme");
    } catch { return value; }
  };
  const isDark = () => root.dataset.theme
    ? root.dataset.theme === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
  const chosen = remembered();
  if (chosen === "dark" || chosen === "light") root.dataset.theme = chosen;
  at("theme").hidden = false;
  at("theme").addEventListener("click", () => {
    root.dataset.theme = isDark() ? "light" : "dark";
    remembered(root.dataset.theme);
  });

  // Search. Every word must be in the name, the path, the class or the unit of an object.
  const query = at("query"), hits = at("hits"), found = at("found"), tree = at("tree");
  const mostHits = 200;
  let index;
  const makeIndex = () => {
    let place = "";
    index = [];
    for (const part of document.querySelectorAll("h3, section[data-c]")) {
      if (part.tagName === "H3") { place = part.textContent; continue; }
      const name = part.querySelector("h4 a").textContent;
      const kind = part.dataset.c, unit = part.dataset.u || "";
      index.push({id: part.id, name, place, kind, unit, plain: name.toLowerCase(),
                  all: `${place}/${name}\n${kind}\n${unit}`.toLowerCase()});
    }
  };
  const fits = (entry, words) => words.every(word =>
    word.startsWith("class:") ? entry.kind.toLowerCase().startsWith(word.slice(6))
      : word.startsWith("unit:") ? entry.unit.toLowerCase() === word.slice(5)
      : entry.all.includes(word));
  const rank = (entry, word) => entry.plain === word ? 0 : entry.plain.startsWith(word) ? 1 : 2;
  const itemOf = entry => {
    const item = document.createElement("li"), link = document.createElement("a");
    const small = document.createElement("small");
    link.href = "#" + entry.id;
    link.textContent = entry.name;
    small.textContent = `${entry.kind}${entry.unit ? ", " + entry.unit : ""} \u2014 ${entry.place}`;
    item.append(link, small);
    return item;
  };
  const search = () => {
    const words = query.value.toLowerCase().split(/\s+/).filter(Boolean);
    tree.hidden = words.length > 0;
    hits.replaceChildren();
    found.textContent = "";
    if (!words.length) return;
    if (!index) makeIndex();
    const all = index.filter(entry => fits(entry, words));
    all.sort((a, b) => rank(a, words[0]) - rank(b, words[0]));
    hits.append(...all.slice(0, mostHits).map(itemOf));
    found.textContent = `${all.length} found` +
      (all.length > mostHits ? `, the first ${mostHits} are listed` : "");
  };
  at("search").hidden = false;
  query.addEventListener("input", search);
  const step = (from, by) => {
    const links = [...hits.querySelectorAll("a")];
    const next = links.indexOf(from) + by;
    (next < 0 ? query : links[Math.min(next, links.length - 1)] || query).focus();
  };
  at("search").addEventListener("keydown", event => {
    if (event.key === "ArrowDown" || event.key === "ArrowUp") {
      step(document.activeElement, event.key === "ArrowDown" ? 1 : -1);
      event.preventDefault();
    } else if (event.key === "Enter" && event.target === query) {
      const first = hits.querySelector("a");
      if (first) first.click();
    } else if (event.key === "Escape") {
      query.value = "";
      search();
      query.focus();
    }
  });
  document.addEventListener("keydown", event => {
    const isTyping = /^(INPUT|SELECT|TEXTAREA)$/.test(event.target.tagName);
    if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey) {
      query.focus();
      event.preventDefault();
    }
  });

  // A link may name the path of an object: #/A/B.
  const follow = () => {
    const hash = decodeURIComponent(location.hash.slice(1));
    if (!hash.startsWith("/")) return;
    if (!index) makeIndex();
    const entry = index.find(each => `${each.place}/${each.name}` === hash);
    if (entry) location.replace("#" + entry.id);
  };
  addEventListener("hashchange", follow);
  follow();

  // Findings by severity and rule.
  const filter = at("filter");
  if (filter) {
    const rows = [...at("list").tBodies[0].rows];
    const apply = () => {
      const severity = at("severity").value, rule = at("rule").value;
      let count = 0;
      for (const row of rows) {
        const isKept = (!severity || row.dataset.s === severity) && (!rule || row.dataset.r === rule);
        row.hidden = !isKept;
        count += isKept;
      }
      at("kept").textContent = `${count} of ${rows.length}`;
    };
    filter.hidden = false;
    filter.addEventListener("change", apply);
    filter.addEventListener("submit", event => event.preventDefault());
    apply();
  }

  // Tables of values: what is under the pointer is marked in the picture and among the numbers.
  const numbers = text => text.trim().split(" ").map(Number);
  const nearest = (places, x) => places.reduce(
    (best, place, i) => Math.abs(place - x) < Math.abs(places[best] - x) ? i : best, 0);
  const cellAt = (svg, event) => {
    const box = svg.getBoundingClientRect(), scale = svg.viewBox.baseVal.width / box.width;
    const x = (event.clientX - box.left) * scale, y = (event.clientY - box.top) * scale;
    if (svg.dataset.kind === "curve") return [nearest(numbers(svg.dataset.x), x), 0];
    const [left, wide, columns] = numbers(svg.dataset.x), [bottom, high, rows] = numbers(svg.dataset.y);
    const column = Math.floor((x - left) / wide), row = Math.floor((bottom - y) / high);
    return column >= 0 && column < columns && row >= 0 && row < rows ? [column, row] : null;
  };
  const markIn = (svg, [column, row]) => {
    const mark = document.createElementNS("http://www.w3.org/2000/svg", "path");
    let d;
    if (svg.dataset.kind === "curve") {
      d = `M${numbers(svg.dataset.x)[column]} 30V250`;
    } else {
      const [left, wide] = numbers(svg.dataset.x), [bottom, high] = numbers(svg.dataset.y);
      d = `M${left + column * wide} ${bottom - row * high}v${-high}h${wide}v${high}z`;
    }
    mark.setAttribute("class", "hot");
    mark.setAttribute("d", d);
    svg.append(mark);
  };
  const clear = figure => {
    for (const mark of figure.querySelectorAll("path.hot")) mark.remove();
    for (const cell of figure.querySelectorAll("td.hot")) cell.classList.remove("hot");
    figure.querySelector(".at").textContent = "\u00a0";
  };
  const show = (figure, place) => {
    clear(figure);
    const table = figure.querySelector("table.num"), body = table.tBodies[0].rows;
    const pictures = figure.querySelectorAll("svg[data-kind]");
    const isCurve = pictures[0].dataset.kind === "curve";
    const [column, row] = place;
    const line = isCurve ? body[column] : body[body.length - 1 - row];
    const cell = line && line.cells[isCurve ? 1 : column + 1];
    if (!cell) return;
    cell.classList.add("hot");
    pictures.forEach(svg => markIn(svg, place));
    const head = table.tHead.rows[0].cells;
    figure.querySelector(".at").textContent = isCurve
      ? `${head[0].textContent} ${line.cells[0].textContent}: ${cell.textContent}`
      : `${head[column + 1].textContent}, ${line.cells[0].textContent}: ${cell.textContent}`;
  };
  for (const figure of document.querySelectorAll("figure.lookup")) {
    figure.addEventListener("pointermove", event => {
      const svg = event.target.closest("svg[data-kind]"), cell = event.target.closest("td");
      if (svg) {
        const place = cellAt(svg, event);
        place ? show(figure, place) : clear(figure);
      } else if (cell && cell.closest("tbody")) {
        const isCurve = figure.querySelector("svg").dataset.kind === "curve";
        const line = cell.parentNode, last = line.parentNode.rows.length - 1;
        show(figure, isCurve ? [line.sectionRowIndex, 0]
          : [cell.cellIndex - 1, last - line.sectionRowIndex]);
      }
    });
    figure.addEventListener("pointerleave", () => clear(figure));
  }
})();
