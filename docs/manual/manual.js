// The search of the manual: finds the sections that contain the most of the words that are typed. words.js, which is loaded
// at the first key, lists [page, section, link, text, 1 if people wrote the page].
(function () {
    "use strict";

    // Any word more counts for more than all places where words are found.
    function rank(entry, queries) {
        let sum = 0;
        for (const query of queries) {
            const section = entry[1].toLowerCase(), page = entry[0].toLowerCase();
            if (section.includes(query)) sum += section === query ? 1040 : 1020;
            else if (page.includes(query)) sum += entry[1] ? 1006 : 1020;
            else if (entry[3].toLowerCase().includes(query)) sum += 1001;
        }
        return sum && sum + (entry[4] ? 3 : 0);
    }

    function show(list, text) {
        const queries = text.toLowerCase().split(/[\s?,;]+/).filter((word) => word.length > 1);
        list.replaceChildren();
        list.hidden = queries.length === 0;
        if (list.hidden) return;
        const found = window.manualWords
            .map((entry) => [rank(entry, queries), entry])
            .filter((ranked) => ranked[0] > 0)
            .sort((a, b) => b[0] - a[0])
            .filter((ranked, i, all) => ranked[0] >= Math.floor(all[0][0] / 1000) * 1000) // as many words as the best
            .slice(0, 15);
        for (const [, entry] of found) {
            const link = document.createElement("a");
            link.href = entry[2];
            link.textContent = entry[1] ? entry[1] + " \u2013 " + entry[0] : entry[0];
            const at = entry[3].toLowerCase().indexOf(queries[0]);
            const context = document.createElement("small");
            context.textContent = entry[3].slice(Math.max(0, at - 40), Math.max(0, at - 40) + 120);
            link.append(context);
            list.append(link);
        }
        if (found.length === 0) list.textContent = "No section contains one of these words.";
    }

    function start() {
        const place = document.getElementById("titlearea") || document.body;
        const area = document.createElement("div");
        area.id = "manual-search";
        const input = document.createElement("input");
        input.type = "search";
        input.placeholder = "Search the manual";
        input.setAttribute("aria-label", input.placeholder);
        const list = document.createElement("div");
        list.id = "manual-found";
        list.hidden = true;
        area.append(input);
        place.append(area);
        document.body.append(list); // elsewhere the side bar would cut it off
        if (customElements.get("doxygen-awesome-dark-mode-toggle")) {
            const toggle = document.createElement("doxygen-awesome-dark-mode-toggle");
            toggle.title = "Light or dark";
            toggle.updateIcon();
            area.append(toggle);
        }

        let loading = null;
        input.addEventListener("input", function () {
            loading = loading || new Promise(function (loaded) {
                const script = document.createElement("script");
                script.src = "words.js";
                script.onload = loaded;
                document.head.append(script);
            });
            const below = input.getBoundingClientRect();
            list.style.top = below.bottom + 6 + "px";
            list.style.left = below.left + "px";
            loading.then(() => show(list, input.value));
        });
        input.addEventListener("keydown", function (event) {
            if (event.key === "Escape") list.hidden = true;
            if (event.key === "Enter" && list.querySelector("a")) list.querySelector("a").click();
        });
        document.addEventListener("click", (event) => { if (!area.contains(event.target) && !list.contains(event.target)) list.hidden = true; });
    }

    document.addEventListener("DOMContentLoaded", start);
})();
